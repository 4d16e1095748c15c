// The link control. Anchors are parsed by qwzLinkText on UTF-8; positions become UTF-16 character counts
// here, where the control counts them.
#include "app/qwzCStaticWithLink.h"

#include <commctrl.h>
#include <shellapi.h>

#include <string>

#include "app/qwzCText.h"
#include "app/qwzLinkText.h"

qwzCStaticWithLink::qwzCStaticWithLink()
    : arrowCursor_(LoadCursorW(nullptr, MAKEINTRESOURCEW(32512))),
      handCursor_(LoadCursorW(nullptr, MAKEINTRESOURCEW(32649)))
{
    defaultFormat_.cbSize = sizeof defaultFormat_;
}

qwzCStaticWithLink::~qwzCStaticWithLink()
{
    if (hwnd_ && IsWindow(hwnd_))
        RemoveWindowSubclass(hwnd_, subclassProc, 1);
}

bool qwzCStaticWithLink::attach(HWND control)
{
    if (!IsWindow(control))
        return false;
    hwnd_ = control;
    return SetWindowSubclass(control, subclassProc, 1, reinterpret_cast<DWORD_PTR>(this)) != 0;
}

LRESULT CALLBACK qwzCStaticWithLink::subclassProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                                  DWORD_PTR self)
{
    if (msg == WM_SETCURSOR && reinterpret_cast<qwzCStaticWithLink*>(self)->OnSetCursor())
        return TRUE;
    return DefSubclassProc(window, msg, wParam, lParam);
}

void qwzCStaticWithLink::insert(const std::wstring& text, LONG& position, bool link)
{
    SendMessageW(hwnd_, EM_SETSEL, static_cast<WPARAM>(position), position);
    CHARFORMAT2W format = {};
    format.cbSize = sizeof format;
    format.dwMask = CFM_COLOR | CFM_UNDERLINE | CFM_LINK;
    if (link) {
        format.crTextColor = RGB(0, 0, 255);
        format.dwEffects = CFE_UNDERLINE | CFE_LINK;
    } else {
        // the default format's colour, underline and link settings
        format.crTextColor = defaultFormat_.crTextColor;
        format.dwEffects = defaultFormat_.dwEffects & (CFE_AUTOCOLOR | CFE_UNDERLINE | CFE_LINK);
    }
    SendMessageW(hwnd_, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    SendMessageW(hwnd_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
    position += static_cast<LONG>(text.size());
}

void qwzCStaticWithLink::setText(const utString& text)
{
    if (!hwnd_)
        return;
    SendMessageW(hwnd_, EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(GetSysColor(COLOR_BTNFACE)));
    SetWindowTextW(hwnd_, L"");
    defaultFormat_ = {};
    defaultFormat_.cbSize = sizeof defaultFormat_;
    SendMessageW(hwnd_, EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&defaultFormat_));

    qwzLinkText parsed(std::string_view(text.text() ? text.text() : "", static_cast<size_t>(text.length())));
    const std::string& plain = parsed.plainText();
    LONG position = 0;
    size_t done = 0;
    url_ = utString::copyOf(parsed.url());
    linkStart_ = linkEnd_ = 0;
    for (const auto& range : parsed.linkRanges()) {
        insert(qwzWide(plain.data() + done, static_cast<int>(range.start - done)), position, false);
        linkStart_ = position;
        insert(qwzWide(plain.data() + range.start, static_cast<int>(range.end - range.start)), position, true);
        linkEnd_ = position;
        done = range.end;
    }
    insert(qwzWide(plain.data() + done, static_cast<int>(plain.size() - done)), position, false);
    measureLink();
    LPARAM mask = SendMessageW(hwnd_, EM_GETEVENTMASK, 0, 0);
    SendMessageW(hwnd_, EM_SETEVENTMASK, 0, mask | ENM_LINK);
}

void qwzCStaticWithLink::measureLink()
{
    linkRect_ = {0, 0, 0, 0};
    if (linkStart_ == linkEnd_)
        return;
    HDC dc = GetDC(hwnd_);
    if (!dc)
        return;
    // the default format's face and size: its height in twips halved gives tenths of a point
    LOGFONTW description = {};
    description.lfHeight = -MulDiv(defaultFormat_.yHeight / 2, GetDeviceCaps(dc, LOGPIXELSY), 720);
    lstrcpynW(description.lfFaceName, defaultFormat_.szFaceName, LF_FACESIZE);
    HFONT font = CreateFontIndirectW(&description);
    HGDIOBJ old = font ? SelectObject(dc, font) : nullptr;

    std::wstring all = qwzWindowText(hwnd_);
    LONG line = static_cast<LONG>(SendMessageW(hwnd_, EM_LINEFROMCHAR, static_cast<WPARAM>(linkStart_), 0));
    LONG top = 0;
    SIZE extent = {};
    for (LONG i = 0; i <= line; ++i) {
        LONG start = static_cast<LONG>(SendMessageW(hwnd_, EM_LINEINDEX, static_cast<WPARAM>(i), 0));
        LONG length = static_cast<LONG>(SendMessageW(hwnd_, EM_LINELENGTH, static_cast<WPARAM>(start), 0));
        if (start < 0 || static_cast<size_t>(start) > all.size())
            break;
        length = std::min<LONG>(length, static_cast<LONG>(all.size()) - start);
        if (i < line) {
            GetTextExtentPoint32W(dc, all.c_str() + start, length, &extent);
            top += extent.cy;
            continue;
        }
        GetTextExtentPoint32W(dc, all.c_str() + start, std::max<LONG>(0, linkStart_ - start), &extent);
        linkRect_.left = extent.cx;
        LONG linkLength = std::min<LONG>(linkEnd_, static_cast<LONG>(all.size())) - linkStart_;
        GetTextExtentPoint32W(dc, all.c_str() + linkStart_, std::max<LONG>(0, linkLength), &extent);
        linkRect_.right = linkRect_.left + extent.cx;
        linkRect_.top = top;
        linkRect_.bottom = top + extent.cy;
    }
    if (old)
        SelectObject(dc, old);
    if (font)
        DeleteObject(font);
    ReleaseDC(hwnd_, dc);
}

bool qwzCStaticWithLink::OnSetCursor()
{
    POINT cursor;
    GetCursorPos(&cursor);
    RECT window;
    GetWindowRect(hwnd_, &window);
    RECT onScreen = linkRect_;
    OffsetRect(&onScreen, window.left, window.top);
    SetCursor(PtInRect(&onScreen, cursor) ? handCursor_ : arrowCursor_);
    return true;
}

bool qwzCStaticWithLink::handleNotify(const NMHDR& header, LRESULT& result)
{
    if (header.hwndFrom != hwnd_ || header.code != EN_LINK)
        return false;
    const auto& link = reinterpret_cast<const ENLINK&>(header);
    if (link.msg == WM_LBUTTONUP)
        openLink(url_);
    result = 0;
    return true;
}

void qwzCStaticWithLink::openLink(const utString& url)
{
    ShellExecuteW(nullptr, L"open", qwzWide(url).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}
