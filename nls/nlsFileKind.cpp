// File access of the catalog library by UTF-8 name. Error numbers are matched by their C library names,
// so the table holds on both platforms.
#include "nls/nlsFileKind.h"

#include <cerrno>
#include <cstring>
#include <string>

#include "foundation/utTextConversion.h"

namespace
{

int retryDepth = 0;

nlsFileKind kindOfFailure(int error, const std::string& path);

nlsFileKind probe(const std::string& path)
{
    platform::Status status;
    int error = platform::stat(utUtf8ToUtf16(path.c_str()).c_str(), status);
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
    case ELOOP:
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
    return platform::stat(utUtf8ToUtf16(path).c_str(), out);
}

nlsFileHandle nlsOpenFile(const char* path, const char* mode)
{
    return nlsFileHandle(utOpenFile(path, mode));
}
