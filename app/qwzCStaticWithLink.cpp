// The link control. Anchors are parsed by qwzLinkText on UTF-8; positions become UTF-16 character counts
// here, where the control counts them.
#include "app/qwzCStaticWithLink.h"

#include <commctrl.h>
#include <shellapi.h>

#include <string>

#include "app/qwzCText.h"
#include "app/qwzLinkText.h"
#include "win/winHandles.h"

namespace
{

// The shell would open anything, a program or a script included: only web and mail targets are let through.
bool opensSafely(const utString& url)
{
    std::string target = url.str();
    for (char& c : target)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    for (const char* scheme : {"http:", "https:", "mailto:"})
        if (target.rfind(scheme, 0) == 0)
            return true;
    return false;
}

// The one holder of the rich-edit library.
winModule& richEdit()
{
    static winModule library;
    return library;
}

} // namespace

bool qwzCStaticWithLink::loadLibrary(const wchar_t* name)
{
    // loaded before the old one is freed: the same library loaded again then stays in memory
    winModule& library = richEdit();
    library = winModule(LoadLibraryW(name));
    return library != nullptr;
}

bool qwzCStaticWithLink::libraryLoaded()
{
    return richEdit() != nullptr;
}

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
    // the control keeps a line end as one character: ask it where the insertion ended
    DWORD end = 0;
    SendMessageW(hwnd_, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
    position = static_cast<LONG>(end);
}

std::wstring qwzCStaticWithLink::textRange(LONG start, LONG end) const
{
    if (end <= start)
        return std::wstring();
    std::wstring text(static_cast<size_t>(end - start) + 1, L'\0');
    TEXTRANGEW range = {{start, end}, text.data()};
    LRESULT copied = SendMessageW(hwnd_, EM_GETTEXTRANGE, 0, reinterpret_cast<LPARAM>(&range));
    text.resize(static_cast<size_t>(copied > 0 ? copied : 0));
    return text;
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
    winWindowDC window(hwnd_);
    HDC dc = window.get();
    if (!dc)
        return;
    // the default format's face and size: its height in twips halved gives tenths of a point
    LOGFONTW description = {};
    description.lfHeight = -MulDiv(defaultFormat_.yHeight / 2, GetDeviceCaps(dc, LOGPIXELSY), 720);
    lstrcpynW(description.lfFaceName, defaultFormat_.szFaceName, LF_FACESIZE);
    winFont font(CreateFontIndirectW(&description));
    winSelection selected(dc, font.get());

    LONG line = static_cast<LONG>(SendMessageW(hwnd_, EM_LINEFROMCHAR, static_cast<WPARAM>(linkStart_), 0));
    LONG top = 0;
    SIZE extent = {};
    for (LONG i = 0; i < line; ++i) {
        LONG start = static_cast<LONG>(SendMessageW(hwnd_, EM_LINEINDEX, static_cast<WPARAM>(i), 0));
        LONG length = static_cast<LONG>(SendMessageW(hwnd_, EM_LINELENGTH, static_cast<WPARAM>(start), 0));
        // an empty line still has a line's height
        std::wstring text = textRange(start, start + length);
        GetTextExtentPoint32W(dc, text.empty() ? L" " : text.c_str(), text.empty() ? 1 : static_cast<int>(text.size()),
                              &extent);
        top += extent.cy;
    }
    LONG lineStart = static_cast<LONG>(SendMessageW(hwnd_, EM_LINEINDEX, static_cast<WPARAM>(line), 0));
    std::wstring before = textRange(lineStart, linkStart_);
    GetTextExtentPoint32W(dc, before.c_str(), static_cast<int>(before.size()), &extent);
    linkRect_.left = extent.cx;
    std::wstring link = textRange(linkStart_, linkEnd_);
    GetTextExtentPoint32W(dc, link.c_str(), static_cast<int>(link.size()), &extent);
    linkRect_.right = linkRect_.left + extent.cx;
    linkRect_.top = top;
    linkRect_.bottom = top + extent.cy;
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
    if (link.msg == WM_LBUTTONUP && opensSafely(url_))
        openLink(url_);
    result = 0;
    return true;
}

void qwzCStaticWithLink::openLink(const utString& url)
{
    ShellExecuteW(nullptr, L"open", qwzWide(url).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}
