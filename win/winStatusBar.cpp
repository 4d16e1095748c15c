// The status bar's panes. Indicator widths are measured in the bar's own font at layout time, so they
// follow the language and the display's scale.
#include "win/winStatusBar.h"

#include "win/winDpi.h"
#include "win/winHandles.h"
#include "win/winIds.h"
#include "win/winText.h"

#include <commctrl.h>

bool winStatusBar::create(HWND frame, unsigned id)
{
    return winControl::create(STATUSCLASSNAMEW, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | SBARS_SIZEGRIP, 0,
                              RECT{0, 0, 0, 0}, frame, int(id));
}

bool winStatusBar::setIndicators(const std::vector<unsigned>& ids)
{
    ids_ = ids;
    texts_.clear();
    for (unsigned id : ids) {
        texts_.push_back(winText::load(id));
        if (texts_.back().empty())
            return false;
    }
    layoutPanes();
    return true;
}

void winStatusBar::setPaneText(int pane, const std::wstring& text)
{
    if (paneText(pane) == text)
        return;
    // the message pane is drawn without a border, as a line of text rather than a field
    WPARAM how = WPARAM(pane) | (pane == 0 ? SBT_NOBORDERS : 0);
    SendMessageW(hwnd(), SB_SETTEXTW, how, reinterpret_cast<LPARAM>(text.c_str()));
}

std::wstring winStatusBar::paneText(int pane) const
{
    LRESULT length = SendMessageW(hwnd(), SB_GETTEXTLENGTHW, WPARAM(pane), 0);
    std::wstring text(size_t(LOWORD(length)) + 1, L'\0');
    SendMessageW(hwnd(), SB_GETTEXTW, WPARAM(pane), reinterpret_cast<LPARAM>(text.data()));
    text.resize(wcslen(text.c_str()));
    return text;
}

void winStatusBar::updateIndicators(const std::function<bool(unsigned)>& on)
{
    for (size_t i = 0; i < ids_.size(); ++i)
        setPaneText(int(i) + 1, on(ids_[i]) ? texts_[i] : std::wstring());
}

void winStatusBar::updateKeyIndicators()
{
    updateIndicators([](unsigned id) {
        int key = id == ID_INDICATOR_CAPS   ? VK_CAPITAL
                  : id == ID_INDICATOR_NUM  ? VK_NUMLOCK
                  : id == ID_INDICATOR_SCRL ? VK_SCROLL
                                            : 0;
        return key && (GetKeyState(key) & 1);
    });
}

void winStatusBar::place(RECT& client)
{
    if (!hwnd() || !(GetWindowLongW(hwnd(), GWL_STYLE) & WS_VISIBLE))
        return;
    // the control aligns itself at the bottom of its parent and knows its own height
    SendMessageW(hwnd(), WM_SIZE, 0, 0);
    RECT r = {};
    GetWindowRect(hwnd(), &r);
    client.bottom = std::max(client.top, client.bottom - (r.bottom - r.top));
    layoutPanes();
}

void winStatusBar::layoutPanes()
{
    HWND bar = hwnd();
    RECT client = {};
    GetClientRect(bar, &client);
    std::vector<int> widths;
    int borders[3] = {};
    SendMessageW(bar, SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(borders));
    UINT dpi = winDpi::of(bar);
    int padding = winDpi::scale(12, dpi) + 2 * borders[2];
    {
        winWindowDC dc(bar);
        winSelection font(dc.get(), reinterpret_cast<HFONT>(SendMessageW(bar, WM_GETFONT, 0, 0)));
        for (const std::wstring& text : texts_) {
            SIZE extent = {};
            GetTextExtentPoint32W(dc.get(), text.c_str(), int(text.size()), &extent);
            widths.push_back(extent.cx + padding);
        }
    }
    // right edges from the right: the last pane reaches the edge and also holds the size grip
    std::vector<int> rights(widths.size() + 1, -1);
    int right = client.right - GetSystemMetricsForDpi(SM_CXVSCROLL, dpi);
    for (size_t i = widths.size(); i-- > 0;) {
        right -= widths[i];
        rights[i] = std::max(0, right);
    }
    SendMessageW(bar, SB_SETPARTS, rights.size(), reinterpret_cast<LPARAM>(rights.data()));
}
