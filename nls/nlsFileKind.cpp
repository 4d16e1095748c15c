// File access of the catalog library by UTF-8 name. Error numbers are matched by their C library names,
// so the table holds on both platforms.
#include "nls/nlsFileKind.h"

#include <cerrno>
#include <cstring>
#include <string>

namespace
{

// A plain decoder for the library's own names; anything malformed becomes "?".
std::u16string toUtf16(const char* text)
{
    std::u16string out;
    const unsigned char* p = reinterpret_cast<const unsigned char*>(text);
    while (p && *p) {
        unsigned c = *p++;
        int more = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
        if (c >= 0x80 && !more) {
            out += u'?';
            continue;
        }
        c &= 0x3F >> more;
        for (; more && (*p & 0xC0) == 0x80; --more)
            c = (c << 6) | (*p++ & 0x3F);
        if (more || c > 0x10FFFF) {
            out += u'?';
        } else if (c >= 0x10000) {
            out += char16_t(0xD800 | ((c - 0x10000) >> 10));
            out += char16_t(0xDC00 | (c & 0x3FF));
        } else {
            out += char16_t(c);
        }
    }
    return out;
}

int retryDepth = 0;

nlsFileKind kindOfFailure(int error, const std::string& path);

nlsFileKind probe(const std::string& path)
{
    platform::Status status;
    int error = platform::stat(toUtf16(path.c_str()).c_str(), status);
    if (error)
        return kindOfFailure(error, path);
    switch (status.kind) {
    case platform::EntryKind::Regular:
    case platform::EntryKind::CharDevice:
        return nlsFILE;
    case platform::EntryKind::Directory:
        return nlsDIRECTORY;
    default:
        return nlsOTHER;
    }
}

nlsFileKind kindOfFailure(int error, const std::string& path)
{
    switch (error) {
    case ENOENT:
    case EBADF:
    case EFAULT:
    case ENOTDIR:
        return nlsNOT_FOUND;
    case EINTR:
    case ENXIO:
    case ENODEV:
    case EMFILE: {
        if (retryDepth >= 15)
            return nlsINTERRUPTED;
        ++retryDepth;
        nlsFileKind kind = probe(path);
        --retryDepth;
        return kind;
    }
    case EACCES:
        return nlsACCESS_DENIED;
    case EMLINK:
        return nlsLINK_ERROR;
    case ENAMETOOLONG:
        return nlsNAME_TOO_LONG;
    default:
        return nlsFAILED;
    }
}

} // namespace

nlsFileKind nlsProbeFile(const char* path)
{
    std::string copy = path ? path : "";
    if (!copy.empty() && (copy.back() == '/' || copy.back() == '\\'))
        copy.pop_back();
    return probe(copy);
}

int nlsStat(const char* path, platform::Status& out)
{
    return platform::stat(toUtf16(path).c_str(), out);
}

nlsFileHandle nlsOpenFile(const char* path, const char* mode)
{
    return nlsFileHandle(platform::fopen(toUtf16(path).c_str(), toUtf16(mode).c_str()));
}
