// The preview's page area: geometry, painting through a memory bitmap, scrolling and keys.
#include "win/winPreviewPages.h"

#include "win/winHandles.h"
#include "win/winPrintable.h"

#include <algorithm>

namespace
{

constexpr int gap = 16;        // around and between the sheets, in pixels
constexpr int scrollStep = 40; // an arrow key or a scroll-bar arrow

// The printer's sheet in its device units, at least 1 by 1; a device that gives no sheet size is all
// printable area.
struct Sheet {
    int width, height, offsetX, offsetY;
};

Sheet sheetOf(HDC printer)
{
    int width = GetDeviceCaps(printer, PHYSICALWIDTH), height = GetDeviceCaps(printer, PHYSICALHEIGHT);
    if (width <= 0 || height <= 0)
        return {std::max(GetDeviceCaps(printer, HORZRES), 1), std::max(GetDeviceCaps(printer, VERTRES), 1), 0, 0};
    return {width, height, GetDeviceCaps(printer, PHYSICALOFFSETX), GetDeviceCaps(printer, PHYSICALOFFSETY)};
}

} // namespace

bool winPreviewPages::create(HWND parent)
{
    return createWindow(0, L"", WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL, 0, 0, 0, 0, parent, nullptr);
}

void winPreviewPages::reset()
{
    scrollX_ = scrollY_ = 0;
    update();
}

const wchar_t* winPreviewPages::className() const
{
    return L"winPreviewPages";
}

void winPreviewPages::PreRegisterClass(WNDCLASSEXW& wc)
{
    wc.hbrBackground = nullptr; // every pixel is painted
}

winPreviewPages::Geometry winPreviewPages::geometry() const
{
    RECT client = {};
    GetClientRect(hwnd(), &client);
    HDC printer = owner_.printerDC();
    int dpiX = std::max(GetDeviceCaps(printer, LOGPIXELSX), 1), dpiY = std::max(GetDeviceCaps(printer, LOGPIXELSY), 1);
    Sheet paper = sheetOf(printer);
    double inchesWide = paper.width / double(dpiX), inchesHigh = paper.height / double(dpiY);
    int shown = int(owner_.pagesShown());
    // pixels per inch that fit the pages shown (one page when zoomed) into the area; each zoom step doubles
    int across = owner_.zoom() == 0 ? shown : 1;
    double fit =
        std::min((client.right - gap * (across + 1)) / (across * inchesWide), (client.bottom - 2 * gap) / inchesHigh);
    double scale = std::max(fit, 8.0) * (1 << owner_.zoom());
    Geometry g;
    g.sheetWidth = std::max(int(inchesWide * scale), 1);
    g.sheetHeight = std::max(int(inchesHigh * scale), 1);
    g.contentWidth = shown * g.sheetWidth + (shown + 1) * gap;
    g.contentHeight = g.sheetHeight + 2 * gap;
    g.originX = g.contentWidth <= client.right ? (client.right - g.contentWidth) / 2 : -scrollX_;
    g.originY = g.contentHeight <= client.bottom ? (client.bottom - g.contentHeight) / 2 : -scrollY_;
    return g;
}

void winPreviewPages::update()
{
    if (!hwnd() || updating_)
        return;
    // showing or hiding a scroll bar resizes the area, which comes back here
    updating_ = true;
    for (int pass = 0; pass < 2; ++pass) {
        Geometry g = geometry();
        RECT client = {};
        GetClientRect(hwnd(), &client);
        scrollX_ = std::clamp(scrollX_, 0, std::max(g.contentWidth - int(client.right), 0));
        scrollY_ = std::clamp(scrollY_, 0, std::max(g.contentHeight - int(client.bottom), 0));
        SCROLLINFO info = {
            sizeof info, SIF_RANGE | SIF_PAGE | SIF_POS, 0, g.contentWidth - 1, UINT(client.right), scrollX_, 0};
        SetScrollInfo(hwnd(), SB_HORZ, &info, TRUE);
        info = {sizeof info, SIF_RANGE | SIF_PAGE | SIF_POS, 0, g.contentHeight - 1, UINT(client.bottom), scrollY_, 0};
        SetScrollInfo(hwnd(), SB_VERT, &info, TRUE);
    }
    updating_ = false;
    InvalidateRect(hwnd(), nullptr, FALSE);
}

void winPreviewPages::drawSheet(HDC dc, const RECT& sheet, std::size_t page)
{
    RECT shadow = {sheet.left + 4, sheet.top + 4, sheet.right + 4, sheet.bottom + 4};
    FillRect(dc, &shadow, GetSysColorBrush(COLOR_3DDKSHADOW));
    FillRect(dc, &sheet, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    FrameRect(dc, &sheet, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));

    Sheet paper = sheetOf(owner_.printerDC());
    int saved = SaveDC(dc);
    IntersectClipRect(dc, sheet.left, sheet.top, sheet.right, sheet.bottom);
    SetMapMode(dc, MM_ANISOTROPIC);
    SetWindowExtEx(dc, paper.width, paper.height, nullptr);
    SetViewportExtEx(dc, sheet.right - sheet.left, sheet.bottom - sheet.top, nullptr);
    SetViewportOrgEx(dc, sheet.left, sheet.top, nullptr);
    // the printable draws from the corner of the printable area, as a printer's origin is
    SetWindowOrgEx(dc, -paper.offsetX, -paper.offsetY, nullptr);
    owner_.printable()->printPage(dc, page);
    RestoreDC(dc, saved);
}

void winPreviewPages::OnPaint()
{
    PAINTSTRUCT ps;
    HDC screen = BeginPaint(hwnd(), &ps);
    RECT client = {};
    GetClientRect(hwnd(), &client);
    {
        winOwnedDC dc(CreateCompatibleDC(screen));
        winBitmap bitmap(
            CreateCompatibleBitmap(screen, std::max(int(client.right), 1), std::max(int(client.bottom), 1)));
        winSelection selected(dc.get(), bitmap.get());
        FillRect(dc.get(), &client, GetSysColorBrush(COLOR_APPWORKSPACE));
        if (owner_.printable()) {
            Geometry g = geometry();
            for (std::size_t i = 0; i < owner_.pagesShown(); ++i) {
                int left = g.originX + gap + int(i) * (g.sheetWidth + gap);
                RECT sheet = {left, g.originY + gap, left + g.sheetWidth, g.originY + gap + g.sheetHeight};
                drawSheet(dc.get(), sheet, owner_.page() + i);
            }
        }
        BitBlt(screen, 0, 0, client.right, client.bottom, dc.get(), 0, 0, SRCCOPY);
    }
    EndPaint(hwnd(), &ps);
}

void winPreviewPages::scrollTo(int x, int y)
{
    scrollX_ = x;
    scrollY_ = y;
    update();
}

void winPreviewPages::OnScroll(int bar, int request)
{
    SCROLLINFO info = {sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(hwnd(), bar, &info);
    int pos = info.nPos;
    switch (request) {
    case SB_LINEUP:
        pos -= scrollStep;
        break;
    case SB_LINEDOWN:
        pos += scrollStep;
        break;
    case SB_PAGEUP:
        pos -= int(info.nPage);
        break;
    case SB_PAGEDOWN:
        pos += int(info.nPage);
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        pos = info.nTrackPos;
        break;
    case SB_TOP:
        pos = 0;
        break;
    case SB_BOTTOM:
        pos = info.nMax;
        break;
    default:
        return;
    }
    if (bar == SB_HORZ)
        scrollTo(pos, scrollY_);
    else
        scrollTo(scrollX_, pos);
}

void winPreviewPages::OnKey(UINT key)
{
    switch (key) {
    case VK_UP:
        scrollTo(scrollX_, scrollY_ - scrollStep);
        break;
    case VK_DOWN:
        scrollTo(scrollX_, scrollY_ + scrollStep);
        break;
    case VK_LEFT:
        scrollTo(scrollX_ - scrollStep, scrollY_);
        break;
    case VK_RIGHT:
        scrollTo(scrollX_ + scrollStep, scrollY_);
        break;
    default:
        owner_.OnPagesKey(key);
        break;
    }
}

void winPreviewPages::OnMouseWheel(int delta)
{
    // a zoomed page scrolls three steps a notch; whole pages turn, a page a notch
    int notches = delta / WHEEL_DELTA;
    if (owner_.zoom() > 0)
        scrollTo(scrollX_, scrollY_ - notches * 3 * scrollStep);
    else if (notches != 0)
        OnKey(notches < 0 ? VK_NEXT : VK_PRIOR);
}

LRESULT winPreviewPages::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_PAINT:
        OnPaint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_SIZE:
        update();
        return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
        OnScroll(msg == WM_HSCROLL ? SB_HORZ : SB_VERT, LOWORD(wParam));
        return 0;
    case WM_MOUSEWHEEL:
        OnMouseWheel(GET_WHEEL_DELTA_WPARAM(wParam));
        return 0;
    case WM_LBUTTONDOWN:
        SetFocus(hwnd());
        return 0;
    case WM_KEYDOWN:
        OnKey(UINT(wParam));
        return 0;
    case WM_SYSCHAR:
        if (owner_.pressMnemonic(wchar_t(wParam)))
            return 0;
        break;
    default:
        break;
    }
    return winWindow::HandleMessage(msg, wParam, lParam);
}
