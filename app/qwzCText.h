// The window boundary's text helpers: UTF-8 utString to the UTF-16 that Win32 takes and back, and
// string-table messages translated and formatted. wchar_t is 16-bit here, so the foundation's
// char16_t conversions are used as they are.
#pragma once

#include <windows.h>

#include <string>

#include "app/qwzAppCatalog.h"
#include "foundation/utString.h"
#include "foundation/utTextConversion.h"
#include "platform/platform.h"

inline std::wstring qwzWide(const char* utf8, int length = -1)
{
    utUtf8ToUtf16 wide(utf8 ? utf8 : "", utf8 ? length : 0);
    return std::wstring(reinterpret_cast<const wchar_t*>(wide.c_str()), static_cast<size_t>(wide.length()));
}

inline std::wstring qwzWide(const utString& utf8)
{
    return qwzWide(utf8.text(), utf8.length());
}

inline utString qwzUtf8(const std::wstring& wide)
{
    return utUtf16ToUtf8(reinterpret_cast<const char16_t*>(wide.c_str()), static_cast<int>(wide.size())).toString();
}

// The translation of string-table entry `id`, formatted printf-style with `args` (trusted formats only:
// the string table's; arguments such as file names are never formats).
template <class... Args> std::wstring qwzMessage(unsigned id, Args... args)
{
    std::string english = platform::loadString(id);
    if constexpr (sizeof...(Args) == 0)
        return qwzWide(translate(english.c_str()));
    else
        return qwzWide(translateFormat(english.c_str(), args...));
}

// The window text of `window`, whole.
inline std::wstring qwzWindowText(HWND window)
{
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}
