// Framework texts: loading, translating and placeholder formatting. The formatter reads only the pattern.
#include "win/winText.h"

#include <windows.h>

#include <algorithm>
#include <climits>

namespace
{
winText::Translator translator = nullptr;
}

void winText::setTranslator(Translator t)
{
    translator = t;
}

std::wstring winText::translate(const std::wstring& english)
{
    return translator ? translator(english) : english;
}

std::wstring winText::loadRaw(unsigned id)
{
    const wchar_t* text = nullptr;
    // with a zero buffer size LoadStringW hands out a read-only pointer into the resource itself
    int len = LoadStringW(GetModuleHandleW(nullptr), id, reinterpret_cast<LPWSTR>(&text), 0);
    if (len <= 0 || !text)
        return {};
    return std::wstring(text, size_t(len));
}

std::wstring winText::load(unsigned id)
{
    return translate(loadRaw(id));
}

std::wstring winText::format(const std::wstring& pattern, std::initializer_list<std::wstring> args)
{
    std::wstring out;
    out.reserve(pattern.size());
    for (size_t i = 0; i < pattern.size(); ++i) {
        wchar_t c = pattern[i];
        if (c == L'%' && pattern.size() - i > 1) {
            wchar_t next = pattern[i + 1];
            if (next == L'%') {
                out += L'%';
                ++i;
                continue;
            }
            if (next >= L'1' && next <= L'9' && size_t(next - L'1') < args.size()) {
                out += *(args.begin() + (next - L'1'));
                ++i;
                continue;
            }
        }
        out += c;
    }
    return out;
}

std::wstring winText::formatId(unsigned id, std::initializer_list<std::wstring> args)
{
    return format(load(id), args);
}

std::wstring winText::windowText(HWND window)
{
    int length = window ? GetWindowTextLengthW(window) : 0;
    if (length <= 0)
        return {};
    std::wstring text(size_t(length) + 1, L'\0');
    text.resize(size_t(std::max(GetWindowTextW(window, text.data(), length + 1), 0)));
    return text;
}

std::wstring winText::fromUtf8(const std::string& text)
{
    // the conversion counts in int: a bigger text is refused whole rather than cut
    if (text.empty() || text.size() > size_t(INT_MAX))
        return {};
    int len = MultiByteToWideChar(CP_UTF8, 0, text.data(), int(text.size()), nullptr, 0);
    std::wstring out(size_t(len > 0 ? len : 0), L'\0');
    if (len > 0)
        MultiByteToWideChar(CP_UTF8, 0, text.data(), int(text.size()), out.data(), len);
    return out;
}

std::string winText::toUtf8(const std::wstring& text)
{
    if (text.empty() || text.size() > size_t(INT_MAX) / 3)
        return {};
    int len = WideCharToMultiByte(CP_UTF8, 0, text.data(), int(text.size()), nullptr, 0, nullptr, nullptr);
    std::string out(size_t(len > 0 ? len : 0), '\0');
    if (len > 0)
        WideCharToMultiByte(CP_UTF8, 0, text.data(), int(text.size()), out.data(), len, nullptr, nullptr);
    return out;
}
