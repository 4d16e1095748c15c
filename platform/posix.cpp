// POSIX side of the platform layer: names are UTF-8 on disk, the string table is compiled in.
#include "platform/platform.h"

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

#include "stringTable.h"

namespace platform
{

// A plain encoder: the names reaching here came from the foundation's own UTF-8 decoder.
static std::string utf8(const char16_t* s)
{
    std::string out;
    for (; s && *s; ++s) {
        char32_t c = *s;
        if (c >= 0xD800 && c <= 0xDBFF && s[1] >= 0xDC00 && s[1] <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10) + (s[1] - 0xDC00);
            ++s;
        }
        if (c < 0x80) {
            out += char(c);
        } else if (c < 0x800) {
            out += char(0xC0 | (c >> 6));
            out += char(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += char(0xE0 | (c >> 12));
            out += char(0x80 | ((c >> 6) & 0x3F));
            out += char(0x80 | (c & 0x3F));
        } else {
            out += char(0xF0 | (c >> 18));
            out += char(0x80 | ((c >> 12) & 0x3F));
            out += char(0x80 | ((c >> 6) & 0x3F));
            out += char(0x80 | (c & 0x3F));
        }
    }
    return out;
}

int stat(const char16_t* name, Status& out)
{
    struct ::stat st;
    if (::stat(utf8(name).c_str(), &st) != 0)
        return errno;
    if (S_ISREG(st.st_mode))
        out.kind = EntryKind::Regular;
    else if (S_ISDIR(st.st_mode))
        out.kind = EntryKind::Directory;
    else if (S_ISCHR(st.st_mode))
        out.kind = EntryKind::CharDevice;
    else if ((st.st_mode & S_IFMT) == 0)
        out.kind = EntryKind::Untyped;
    else
        out.kind = EntryKind::Other;
    out.size = st.st_size;
    out.writeTime = static_cast<long long>(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
    return 0;
}

std::FILE* fopen(const char16_t* name, const char16_t* mode)
{
    return std::fopen(utf8(name).c_str(), utf8(mode).c_str());
}

std::FILE* fopenShared(const char16_t* name)
{
    return std::fopen(utf8(name).c_str(), "rb");
}

int seek(std::FILE* file, long long offset)
{
    return fseeko(file, static_cast<off_t>(offset), SEEK_SET) != 0 ? (errno ? errno : EINVAL) : 0;
}

long long fileLength(std::FILE* file)
{
    return fseeko(file, 0, SEEK_END) != 0 ? -1 : static_cast<long long>(ftello(file));
}

int unlink(const char16_t* name)
{
    return ::unlink(utf8(name).c_str()) == 0 ? 0 : errno;
}

int rmdir(const char16_t* name)
{
    return ::rmdir(utf8(name).c_str()) == 0 ? 0 : errno;
}

bool toAnsiCodePage(const std::u16string& text, std::string& out)
{
    out = utf8(text.c_str());
    return true;
}

unsigned ansiCodePage()
{
    return 65001;
}

UserLocale userDefaultLocale()
{
    UserLocale l{"English (United States)", "ENU", "USA"};
    const char* v = std::getenv("QUILLON_USER_LOCALE");
    if (!v || !*v)
        return l;
    std::string s = v;
    size_t a = s.find('|'), b = a == std::string::npos ? a : s.find('|', a + 1);
    if (b == std::string::npos)
        return l;
    return {s.substr(0, a), s.substr(a + 1, b - a - 1), s.substr(b + 1)};
}

std::string executablePath(unsigned maxChars)
{
    char buf[4096];
    ssize_t n = ::readlink("/proc/self/exe", buf, sizeof buf - 1);
    if (n <= 0 || unsigned(n) > maxChars)
        return {};
    return std::string(buf, size_t(n));
}

void messageBox(const std::string& text, const std::string& title, BoxIcon)
{
    std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
}

std::string loadString(unsigned id)
{
    return qwzStringTableLookup(id);
}

bool loadBitmap(unsigned, int&, int&, std::vector<std::uint8_t>&)
{
    return false; // bitmaps are resources of the Windows program only
}

Rgb systemColour(SystemColour which)
{
    switch (which) {
    case SystemColour::ButtonFace:
        return {240, 240, 240};
    case SystemColour::ButtonShadow:
        return {160, 160, 160};
    case SystemColour::ButtonHighlight:
        return {255, 255, 255};
    case SystemColour::WindowFrame:
        return {100, 100, 100};
    }
    return {};
}

std::string setCLocale(int category, const std::string& name)
{
    static const char* const shipped[][2] = {
        {"English", "en_GB.UTF-8"}, {"German", "de_DE.UTF-8"},  {"French", "fr_FR.UTF-8"},
        {"Spanish", "es_ES.UTF-8"}, {"Italian", "it_IT.UTF-8"}, {"Japanese", "ja_JP.UTF-8"},
    };
    std::string language = name.substr(0, name.find_first_of("-_"));
    for (const auto& row : shipped) {
        if (language != row[0])
            continue;
        if (std::setlocale(category, row[1]))
            return row[1];
        return std::setlocale(category, "C.UTF-8") ? "C.UTF-8" : "";
    }
    return std::setlocale(category, name.c_str()) ? name : std::string();
}

bool localTime(std::time_t t, std::tm& out)
{
    return localtime_r(&t, &out) != nullptr;
}

void debugBreak() {}

} // namespace platform
