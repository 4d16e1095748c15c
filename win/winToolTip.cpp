// Tooltip texts: one template answers both forms of the request, each with its own copy into the buffer.
#include "win/winToolTip.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

namespace
{

// Copies `text` into a tooltip request's buffer of `size` characters, cutting it between characters.
void copyTip(const std::wstring& text, wchar_t* buffer, size_t size)
{
    size_t n = std::min(text.size(), size - 1);
    if (n > 0 && n < text.size() && IS_HIGH_SURROGATE(text[n - 1]))
        --n;
    text.copy(buffer, n);
    buffer[n] = L'\0';
}

void copyTip(const std::wstring& text, char* buffer, size_t size)
{
    int n = int(text.size()), written = 0;
    // the longest head of the text that fits, in the program's code page
    while (n > 0 &&
           (written = WideCharToMultiByte(CP_ACP, 0, text.c_str(), n, buffer, int(size) - 1, nullptr, nullptr)) == 0)
        n -= n > 1 && IS_LOW_SURROGATE(text[size_t(n) - 1]) ? 2 : 1;
    buffer[written] = '\0';
}

// Fills a narrow or wide tooltip request with the tooltip of the command it names.
template <typename Request> void answerTip(Request& request, const std::function<std::wstring(unsigned id)>& tipOf)
{
    UINT_PTR id = request.hdr.idFrom;
    if (request.uFlags & TTF_IDISHWND)
        id = UINT_PTR(GetDlgCtrlID(reinterpret_cast<HWND>(id)));
    copyTip(id ? tipOf(unsigned(id)) : std::wstring(), request.szText, std::size(request.szText));
    request.lpszText = request.szText;
    request.hinst = nullptr;
}

} // namespace

void winToolTip::answer(NMHDR& header, const std::function<std::wstring(unsigned id)>& tipOf)
{
    if (header.code == TTN_GETDISPINFOW)
        answerTip(reinterpret_cast<NMTTDISPINFOW&>(header), tipOf);
    else
        answerTip(reinterpret_cast<NMTTDISPINFOA&>(header), tipOf);
}
