// The docked toolbar. The gripper lives in the non-client area so that the control's own layout and
// hit testing of buttons stay untouched; dragging it moves the bar live to the frame's nearest side.
#include "win/winToolBar.h"

#include "win/winDpi.h"
#include "win/winHandles.h"

namespace
{

// the non-client hit code of the gripper: a plain border, which DefWindowProc leaves alone
const LRESULT gripperHit = HTBORDER;

} // namespace

bool winToolBar::create(HWND frame, unsigned id, DWORD style)
{
    // the frame places the bar, so the control neither sizes nor aligns itself, and draws no divider
    DWORD ws = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER | style;
    if (!winControl::create(TOOLBARCLASSNAMEW, ws, 0, RECT{0, 0, 0, 0}, frame, int(id)))
        return false;
    SendMessageW(hwnd(), TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    // the non-client area has grown by the gripper: let the window take it into account
    SetWindowPos(hwnd(), nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
    return true;
}

bool winToolBar::setButtons(const std::vector<unsigned>& commands)
{
    commands_ = commands;
    return addButtons();
}

bool winToolBar::addButtons()
{
    while (SendMessageW(hwnd(), TB_DELETEBUTTON, 0, 0)) {
    }
    // standing on end (CCS_VERT draws separators across), every button and separator wraps: one a row
    LONG style = GetWindowLongW(hwnd(), GWL_STYLE);
    SetWindowLongW(hwnd(), GWL_STYLE, vertical() ? style | CCS_VERT : style & ~CCS_VERT);
    BYTE wrap = vertical() ? TBSTATE_WRAP : 0;
    std::vector<TBBUTTON> buttons;
    int image = 0;
    for (unsigned command : commands_) {
        TBBUTTON b = {};
        b.fsState = wrap;
        if (command == 0) {
            b.fsStyle = BTNS_SEP;
        } else {
            b.iBitmap = image++;
            b.idCommand = int(command);
            b.fsState |= TBSTATE_ENABLED;
            b.fsStyle = BTNS_BUTTON;
        }
        buttons.push_back(b);
    }
    bool ok = SendMessageW(hwnd(), TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data())) != 0;
    SetWindowPos(hwnd(), nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
    return ok;
}

void winToolBar::setSizes(SIZE button, SIZE image)
{
    SendMessageW(hwnd(), TB_SETBITMAPSIZE, 0, MAKELPARAM(image.cx, image.cy));
    SendMessageW(hwnd(), TB_SETBUTTONSIZE, 0, MAKELPARAM(button.cx, button.cy));
}

void winToolBar::setImageLists(HIMAGELIST normal, HIMAGELIST disabled)
{
    SendMessageW(hwnd(), TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(normal));
    SendMessageW(hwnd(), TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabled));
}

void winToolBar::enableDocking(bool enable)
{
    docking_ = enable;
    // the gripper is non-client area, which the window measures again only when told
    SetWindowPos(hwnd(), nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
}

void winToolBar::setSide(Side side)
{
    side_ = side;
    addButtons(); // the buttons flow again; their states follow at the next idle update
}

int winToolBar::scaled(int pixels) const
{
    return winDpi::scale(pixels, winDpi::of(hwnd()));
}

RECT winToolBar::nonClientMargins() const
{
    int grip = docking_ ? scaled(9) : scaled(2), edge = scaled(2);
    return vertical() ? RECT{edge, grip, edge, edge} : RECT{grip, edge, edge, edge};
}

RECT winToolBar::gripperRect() const
{
    RECT window = {};
    GetWindowRect(hwnd(), &window);
    OffsetRect(&window, -window.left, -window.top);
    RECT m = nonClientMargins();
    if (vertical())
        window.bottom = m.top;
    else
        window.right = m.left;
    return window;
}

void winToolBar::place(RECT& client)
{
    // the style, not IsWindowVisible: the frame lays out before it is first shown
    if (!hwnd() || !(GetWindowLongW(hwnd(), GWL_STYLE) & WS_VISIBLE))
        return;
    DWORD size = DWORD(SendMessageW(hwnd(), TB_GETBUTTONSIZE, 0, 0));
    RECT m = nonClientMargins();
    int depth = vertical() ? LOWORD(size) + m.left + m.right : HIWORD(size) + m.top + m.bottom;
    RECT r = client;
    switch (side_) {
    case Side::Top:
        r.bottom = client.top = std::min(client.top + depth, client.bottom);
        break;
    case Side::Bottom:
        r.top = client.bottom = std::max(client.bottom - depth, client.top);
        break;
    case Side::Left:
        r.right = client.left = std::min(client.left + depth, client.right);
        break;
    case Side::Right:
        r.left = client.right = std::max(client.right - depth, client.left);
        break;
    }
    MoveWindow(hwnd(), r.left, r.top, r.right - r.left, r.bottom - r.top, TRUE);
}

void winToolBar::updateButtons(const std::function<void(unsigned, bool&, bool&)>& state)
{
    for (unsigned command : commands_) {
        if (command == 0)
            continue;
        LRESULT old = SendMessageW(hwnd(), TB_GETSTATE, command, 0);
        if (old == -1)
            continue;
        bool enabled = (old & TBSTATE_ENABLED) != 0, checked = (old & TBSTATE_CHECKED) != 0;
        state(command, enabled, checked);
        LRESULT now = (old & ~(TBSTATE_ENABLED | TBSTATE_CHECKED)) | (enabled ? TBSTATE_ENABLED : 0) |
                      (checked ? TBSTATE_CHECKED : 0);
        // only a change repaints: this runs whenever the program falls idle
        if (now != old)
            SendMessageW(hwnd(), TB_SETSTATE, command, MAKELPARAM(now, 0));
    }
}

LRESULT winToolBar::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_NCCALCSIZE: {
        LRESULT result = defaultProc(msg, wParam, lParam);
        OnNcCalcSize(*reinterpret_cast<RECT*>(lParam)); // the first rectangle in both forms
        return result;
    }
    case WM_NCPAINT:
        defaultProc(msg, wParam, lParam);
        OnNcPaint();
        return 0;
    case WM_NCHITTEST:
        if (OnNcHitTest(POINT{short(LOWORD(lParam)), short(HIWORD(lParam))}))
            return gripperHit;
        break;
    case WM_SETCURSOR:
        if (OnSetCursor(LOWORD(lParam)))
            return TRUE;
        break;
    case WM_NCLBUTTONDOWN:
        if (OnNcLButtonDown(unsigned(wParam)))
            return 0;
        break;
    case WM_MOUSEMOVE:
        if (OnMouseMove(POINT{short(LOWORD(lParam)), short(HIWORD(lParam))}))
            return 0;
        break;
    case WM_LBUTTONUP:
        if (OnLButtonUp())
            return 0;
        break;
    case WM_CAPTURECHANGED:
        dragging_ = false;
        break;
    default:
        break;
    }
    return defaultProc(msg, wParam, lParam);
}

bool winToolBar::OnNcHitTest(POINT screen) const
{
    RECT window = {}, grip = gripperRect();
    GetWindowRect(hwnd(), &window);
    return docking_ && PtInRect(&grip, POINT{screen.x - window.left, screen.y - window.top});
}

bool winToolBar::OnSetCursor(unsigned hit)
{
    if (!docking_ || hit != gripperHit)
        return false;
    SetCursor(LoadCursorW(nullptr, IDC_SIZEALL));
    return true;
}

bool winToolBar::OnNcLButtonDown(unsigned hit)
{
    // the gripper starts a drag that follows the pointer to the nearest side of the frame
    if (!docking_ || hit != gripperHit)
        return false;
    dragging_ = true;
    SetCapture(hwnd());
    return true;
}

bool winToolBar::OnMouseMove(POINT client)
{
    if (!dragging_)
        return false;
    ClientToScreen(hwnd(), &client);
    drag(client);
    return true;
}

bool winToolBar::OnLButtonUp()
{
    if (!dragging_)
        return false;
    ReleaseCapture();
    return true;
}

void winToolBar::OnNcCalcSize(RECT& rect)
{
    RECT m = nonClientMargins();
    rect.left += m.left;
    rect.top += m.top;
    rect.right = std::max(rect.left, rect.right - m.right);
    rect.bottom = std::max(rect.top, rect.bottom - m.bottom);
}

void winToolBar::OnNcPaint()
{
    winWindowDC windowDC(hwnd(), true);
    HDC dc = windowDC.get();
    if (!dc)
        return;
    RECT window = {}, client = {};
    GetWindowRect(hwnd(), &window);
    GetClientRect(hwnd(), &client);
    MapWindowPoints(hwnd(), nullptr, reinterpret_cast<POINT*>(&client), 2);
    OffsetRect(&client, -window.left, -window.top);
    OffsetRect(&window, -window.left, -window.top);
    ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
    FillRect(dc, &window, GetSysColorBrush(COLOR_BTNFACE));
    if (docking_) {
        // a row of raised dots across the gripper, as the shell's own bars have
        RECT grip = gripperRect();
        int dot = std::max(1, scaled(2)), step = dot * 2, inset = scaled(5);
        int cx = (grip.left + grip.right) / 2 - dot / 2, cy = (grip.top + grip.bottom) / 2 - dot / 2;
        int from = vertical() ? grip.left + inset : grip.top + inset;
        int to = vertical() ? grip.right - inset : grip.bottom - inset;
        for (int at = from; at + dot <= to; at += step + dot) {
            int x = vertical() ? at : cx, y = vertical() ? cy : at;
            RECT light = {x + 1, y + 1, x + 1 + dot, y + 1 + dot}, dark = {x, y, x + dot, y + dot};
            FillRect(dc, &light, GetSysColorBrush(COLOR_BTNHIGHLIGHT));
            FillRect(dc, &dark, GetSysColorBrush(COLOR_BTNSHADOW));
        }
    }
}

void winToolBar::drag(POINT screen)
{
    HWND frame = GetParent(hwnd());
    RECT client = {};
    GetClientRect(frame, &client);
    ScreenToClient(frame, &screen);
    // the side whose edge is nearest to the pointer
    const long distance[] = {screen.y - client.top, client.bottom - screen.y, screen.x - client.left,
                             client.right - screen.x};
    int nearest = 0;
    for (int i = 1; i < 4; ++i)
        if (distance[i] < distance[nearest])
            nearest = i;
    auto side = static_cast<Side>(nearest);
    if (side == side_)
        return;
    setSide(side);
    if (onDocked)
        onDocked(side);
}
