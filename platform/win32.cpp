// Windows side of the platform layer.
#include "platform/platform.h"

#include <windows.h>

#include <cerrno>
#include <clocale>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <vector>
#include <wchar.h>

namespace platform
{

static const wchar_t* w(const char16_t* s)
{
    return reinterpret_cast<const wchar_t*>(s);
}

static std::string utf8(const wchar_t* s, int n)
{
    if (n <= 0)
        return {};
    int len = WideCharToMultiByte(CP_UTF8, 0, s, n, nullptr, 0, nullptr, nullptr);
    std::string out(size_t(len), '\0');
    WideCharToMultiByte(CP_UTF8, 0, s, n, out.data(), len, nullptr, nullptr);
    return out;
}

static std::wstring wide(const std::string& s)
{
    if (s.empty())
        return {};
    int len = MultiByteToWideChar(CP_UTF8, 0, s.data(), int(s.size()), nullptr, 0);
    std::wstring out(size_t(len), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, s.data(), int(s.size()), out.data(), len);
    return out;
}

int stat(const char16_t* name, Status& out)
{
    struct _stat64i32 st;
    errno = 0;
    if (_wstat64i32(w(name), &st) != 0)
        return errno ? errno : ENOENT;
    unsigned type = st.st_mode & _S_IFMT;
    if (type == _S_IFREG)
        out.kind = EntryKind::Regular;
    else if (type == _S_IFDIR)
        out.kind = EntryKind::Directory;
    else if (type == _S_IFCHR)
        out.kind = EntryKind::CharDevice;
    else if (type == 0)
        out.kind = EntryKind::Untyped;
    else
        out.kind = EntryKind::Other;
    out.size = st.st_size;
    // the C library's time has whole seconds, and it may take size and time from the folder's entry, which
    // lags behind a file that another program is writing; the file's own attributes are current
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (GetFileAttributesExW(w(name), GetFileExInfoStandard, &data)) {
        if (out.kind == EntryKind::Regular)
            out.size =
                static_cast<long long>((static_cast<unsigned long long>(data.nFileSizeHigh) << 32) | data.nFileSizeLow);
        out.writeTime =
            static_cast<long long>((static_cast<unsigned long long>(data.ftLastWriteTime.dwHighDateTime) << 32) |
                                   data.ftLastWriteTime.dwLowDateTime);
    } else {
        out.writeTime = static_cast<long long>(st.st_mtime);
    }
    return 0;
}

std::FILE* fopen(const char16_t* name, const char16_t* mode)
{
    return _wfopen(w(name), w(mode));
}

std::FILE* fopenShared(const char16_t* name)
{
    // _wfopen denies deleting: a watched log could then be neither rotated nor saved over
    HANDLE handle = CreateFileW(w(name), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        DWORD error = GetLastError();
        errno = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? ENOENT : EACCES;
        return nullptr;
    }
    int fd = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_RDONLY | _O_BINARY);
    if (fd == -1) {
        CloseHandle(handle);
        errno = EMFILE;
        return nullptr;
    }
    std::FILE* file = _fdopen(fd, "rb");
    if (file == nullptr)
        _close(fd);
    return file;
}

int seek(std::FILE* file, long long offset)
{
    return _fseeki64(file, offset, SEEK_SET) != 0 ? (errno ? errno : EINVAL) : 0;
}

long long fileLength(std::FILE* file)
{
    return _fseeki64(file, 0, SEEK_END) != 0 ? -1 : _ftelli64(file);
}

int unlink(const char16_t* name)
{
    return _wunlink(w(name)) == 0 ? 0 : errno;
}

int rmdir(const char16_t* name)
{
    return _wrmdir(w(name)) == 0 ? 0 : errno;
}

bool toAnsiCodePage(const std::u16string& text, std::string& out)
{
    out.clear();
    if (text.empty())
        return true;
    const wchar_t* s = w(text.c_str());
    int len = WideCharToMultiByte(CP_ACP, 0, s, int(text.size()), nullptr, 0, nullptr, nullptr);
    if (len <= 0)
        return false;
    out.resize(size_t(len));
    return WideCharToMultiByte(CP_ACP, 0, s, int(text.size()), out.data(), len, nullptr, nullptr) == len;
}

unsigned ansiCodePage()
{
    return GetACP();
}

static std::string localeInfo(LCID lcid, LCTYPE type)
{
    wchar_t buf[500];
    int n = GetLocaleInfoW(lcid, type, buf, 500);
    return n > 1 ? utf8(buf, n - 1) : std::string();
}

UserLocale userDefaultLocale()
{
    LCID lcid = GetUserDefaultLCID();
    return {localeInfo(lcid, LOCALE_SENGLANGUAGE), localeInfo(lcid, LOCALE_SABBREVLANGNAME),
            localeInfo(lcid, LOCALE_SABBREVCTRYNAME)};
}

std::string executablePath(unsigned maxChars)
{
    std::vector<wchar_t> buf(maxChars + 1);
    DWORD n = GetModuleFileNameW(nullptr, buf.data(), DWORD(buf.size()));
    if (n == 0 || n > maxChars)
        return {};
    return utf8(buf.data(), int(n));
}

void messageBox(const std::string& text, const std::string& title, BoxIcon icon)
{
    UINT flags = MB_OK;
    if (icon == BoxIcon::Error)
        flags |= MB_ICONERROR;
    else if (icon == BoxIcon::Warning)
        flags |= MB_ICONWARNING;
    else if (icon == BoxIcon::Information)
        flags |= MB_ICONINFORMATION;
    MessageBoxW(nullptr, wide(text).c_str(), wide(title).c_str(), flags);
}

std::string loadString(unsigned id)
{
    const wchar_t* text = nullptr;
    // length 0 asks for a read-only pointer into the resource, so no buffer limits the text
    int n = LoadStringW(GetModuleHandleW(nullptr), id, reinterpret_cast<LPWSTR>(&text), 0);
    return n > 0 ? utf8(text, n) : std::string();
}

bool loadBitmap(unsigned id, int& width, int& height, std::vector<std::uint8_t>& pixels)
{
    // a DIB section keeps the stored pixels, alpha byte included, where a device bitmap would not
    auto bitmap = static_cast<HBITMAP>(
        LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    if (!bitmap)
        return false;
    BITMAP bm = {};
    bool ok = GetObjectW(bitmap, sizeof bm, &bm) == sizeof bm && bm.bmWidth > 0 && bm.bmHeight > 0 &&
              bm.bmWidth <= 4096 && bm.bmHeight <= 4096;
    if (ok) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = bm.bmWidth;
        info.bmiHeader.biHeight = -bm.bmHeight; // top-down
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        pixels.assign(size_t(bm.bmWidth) * size_t(bm.bmHeight) * 4, 0);
        HDC screen = GetDC(nullptr);
        ok = GetDIBits(screen, bitmap, 0, UINT(bm.bmHeight), pixels.data(), &info, DIB_RGB_COLORS) == bm.bmHeight;
        ReleaseDC(nullptr, screen);
        width = bm.bmWidth;
        height = bm.bmHeight;
    }
    DeleteObject(bitmap);
    return ok;
}

Rgb systemColour(SystemColour which)
{
    int index = COLOR_BTNFACE;
    switch (which) {
    case SystemColour::ButtonFace:
        index = COLOR_BTNFACE;
        break;
    case SystemColour::ButtonShadow:
        index = COLOR_BTNSHADOW;
        break;
    case SystemColour::ButtonHighlight:
        index = COLOR_BTNHIGHLIGHT;
        break;
    case SystemColour::WindowFrame:
        index = COLOR_WINDOWFRAME;
        break;
    }
    COLORREF c = GetSysColor(index);
    return {GetRValue(c), GetGValue(c), GetBValue(c)};
}

std::string setCLocale(int category, const std::string& name)
{
    return std::setlocale(category, name.c_str()) ? name : std::string();
}

bool localTime(std::time_t t, std::tm& out)
{
    return localtime_s(&out, &t) == 0;
}

void debugBreak()
{
    if (IsDebuggerPresent())
        DebugBreak();
}

} // namespace platform
