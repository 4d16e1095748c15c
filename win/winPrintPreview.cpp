// The print preview: a bar of push buttons over a scrolling page area. A page is drawn by mapping the
// printer's whole sheet onto a white rectangle (MM_ANISOTROPIC, origin moved to the printable corner) and
// letting the printable draw it exactly as on paper; paint goes through a memory bitmap, so paging and
// zooming never flicker.
#include "win/winPrintPreview.h"

#include "win/winApp.h"
#include "win/winFrame.h"
#include "win/winPrintable.h"
#include "win/winPrinter.h"
#include "win/winText.h"

#include "resourceIds.h"

#include <algorithm>
#include <cwctype>

namespace
{

enum : unsigned {
    cmdNew = 57600,
    cmdOpen = 57601,
    cmdPrintSetup = 57606,
    cmdPrint = 57607,
    cmdPrintDirect = 57608,
    cmdPrintPreview = 57609,
};

constexpr int gap = 16;        // around and between the sheets, in pixels
constexpr int scrollStep = 40; // an arrow key or a scroll-bar arrow

// The bar's buttons in order, with their texts; the Pages button shows One Page or Two Page.
const struct {
    int id;
    unsigned text;
} barButtons[] = {
    {winPrintPreview::printButton, WIN_IDS_PREVIEW_PRINT},
    {winPrintPreview::nextButton, WIN_IDS_PREVIEW_NEXT},
    {winPrintPreview::prevButton, WIN_IDS_PREVIEW_PREV},
    {winPrintPreview::pagesButton, WIN_IDS_PREVIEW_TWO},
    {winPrintPreview::zoomInButton, WIN_IDS_PREVIEW_ZOOM_IN},
    {winPrintPreview::zoomOutButton, WIN_IDS_PREVIEW_ZOOM_OUT},
    {winPrintPreview::closeButton, WIN_IDS_PREVIEW_CLOSE},
};

// The underlined letter of a control text ("&Next Page" -> 'n'); 0 when none.
wchar_t mnemonicOf(const std::wstring& text)
{
    for (size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != L'&')
            continue;
        if (text[i + 1] != L'&')
            return wchar_t(std::towlower(text[i + 1]));
        ++i;
    }
    return 0;
}

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

std::wstring textOf(HWND window)
{
    std::wstring text(size_t(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(size_t(GetWindowTextW(window, text.data(), int(text.size()))));
    return text;
}

} // namespace

// The page area: the sheets on a dark ground, with scroll bars when a zoomed page is bigger than the area.
class winPrintPreview::Pages : public winWindow
{
public:
    explicit Pages(winPrintPreview& owner) : owner_(owner) {}
    bool create(HWND parent)
    {
        return createWindow(0, L"", WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL, 0, 0, 0, 0, parent, nullptr);
    }
    // Back to the top left corner, scroll bars and picture renewed.
    void reset()
    {
        scrollX_ = scrollY_ = 0;
        update();
    }
    void update();

protected:
    const wchar_t* className() const override
    {
        return L"winPreviewPages";
    }
    void PreRegisterClass(WNDCLASSEXW& wc) override
    {
        wc.hbrBackground = nullptr; // every pixel is painted
    }
    LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;

private:
    struct Geometry {
        int sheetWidth, sheetHeight; // one sheet on the screen
        int contentWidth, contentHeight;
        int originX, originY; // the content's corner in the client area
    };
    Geometry geometry() const;
    void OnPaint();
    void drawSheet(HDC dc, const RECT& sheet, std::size_t page);
    void OnKey(UINT key);
    void scrollTo(int x, int y);
    void OnScroll(int bar, int request);

    winPrintPreview& owner_;
    int scrollX_ = 0, scrollY_ = 0;
    bool updating_ = false;
};

winPrintPreview::Pages::Geometry winPrintPreview::Pages::geometry() const
{
    RECT client = {};
    GetClientRect(hwnd(), &client);
    HDC printer = owner_.printer_;
    int dpiX = std::max(GetDeviceCaps(printer, LOGPIXELSX), 1), dpiY = std::max(GetDeviceCaps(printer, LOGPIXELSY), 1);
    Sheet paper = sheetOf(printer);
    double inchesWide = paper.width / double(dpiX), inchesHigh = paper.height / double(dpiY);
    int shown = int(owner_.pagesShown());
    // pixels per inch that fit the pages shown (one page when zoomed) into the area; each zoom step doubles
    int across = owner_.zoom_ == 0 ? shown : 1;
    double fit =
        std::min((client.right - gap * (across + 1)) / (across * inchesWide), (client.bottom - 2 * gap) / inchesHigh);
    double scale = std::max(fit, 8.0) * (1 << owner_.zoom_);
    Geometry g;
    g.sheetWidth = std::max(int(inchesWide * scale), 1);
    g.sheetHeight = std::max(int(inchesHigh * scale), 1);
    g.contentWidth = shown * g.sheetWidth + (shown + 1) * gap;
    g.contentHeight = g.sheetHeight + 2 * gap;
    g.originX = g.contentWidth <= client.right ? (client.right - g.contentWidth) / 2 : -scrollX_;
    g.originY = g.contentHeight <= client.bottom ? (client.bottom - g.contentHeight) / 2 : -scrollY_;
    return g;
}

void winPrintPreview::Pages::update()
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

void winPrintPreview::Pages::drawSheet(HDC dc, const RECT& sheet, std::size_t page)
{
    RECT shadow = {sheet.left + 4, sheet.top + 4, sheet.right + 4, sheet.bottom + 4};
    FillRect(dc, &shadow, GetSysColorBrush(COLOR_3DDKSHADOW));
    FillRect(dc, &sheet, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    FrameRect(dc, &sheet, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));

    Sheet paper = sheetOf(owner_.printer_);
    int saved = SaveDC(dc);
    IntersectClipRect(dc, sheet.left, sheet.top, sheet.right, sheet.bottom);
    SetMapMode(dc, MM_ANISOTROPIC);
    SetWindowExtEx(dc, paper.width, paper.height, nullptr);
    SetViewportExtEx(dc, sheet.right - sheet.left, sheet.bottom - sheet.top, nullptr);
    SetViewportOrgEx(dc, sheet.left, sheet.top, nullptr);
    // the printable draws from the corner of the printable area, as a printer's origin is
    SetWindowOrgEx(dc, -paper.offsetX, -paper.offsetY, nullptr);
    owner_.printable_->printPage(dc, page);
    RestoreDC(dc, saved);
}

void winPrintPreview::Pages::OnPaint()
{
    PAINTSTRUCT ps;
    HDC screen = BeginPaint(hwnd(), &ps);
    RECT client = {};
    GetClientRect(hwnd(), &client);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, std::max(int(client.right), 1), std::max(int(client.bottom), 1));
    HGDIOBJ oldBitmap = SelectObject(dc, bitmap);
    FillRect(dc, &client, GetSysColorBrush(COLOR_APPWORKSPACE));
    if (owner_.printable_) {
        Geometry g = geometry();
        for (std::size_t i = 0; i < owner_.pagesShown(); ++i) {
            int left = g.originX + gap + int(i) * (g.sheetWidth + gap);
            RECT sheet = {left, g.originY + gap, left + g.sheetWidth, g.originY + gap + g.sheetHeight};
            drawSheet(dc, sheet, owner_.page_ + i);
        }
    }
    BitBlt(screen, 0, 0, client.right, client.bottom, dc, 0, 0, SRCCOPY);
    SelectObject(dc, oldBitmap);
    DeleteObject(bitmap);
    DeleteDC(dc);
    EndPaint(hwnd(), &ps);
}

void winPrintPreview::Pages::scrollTo(int x, int y)
{
    scrollX_ = x;
    scrollY_ = y;
    update();
}

void winPrintPreview::Pages::OnScroll(int bar, int request)
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

void winPrintPreview::Pages::OnKey(UINT key)
{
    winPrintPreview& p = owner_;
    switch (key) {
    case VK_ESCAPE:
        p.OnButton(closeButton);
        break;
    case VK_NEXT:
        p.OnButton(nextButton);
        break;
    case VK_PRIOR:
        p.OnButton(prevButton);
        break;
    case VK_HOME:
        p.showPage(0);
        break;
    case VK_END:
        p.showPage(p.pageCount_ - 1);
        break;
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
    case VK_ADD:
    case VK_OEM_PLUS:
        p.OnButton(zoomInButton);
        break;
    case VK_SUBTRACT:
    case VK_OEM_MINUS:
        p.OnButton(zoomOutButton);
        break;
    default:
        break;
    }
}

LRESULT winPrintPreview::Pages::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
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
    case WM_MOUSEWHEEL: {
        int notches = GET_WHEEL_DELTA_WPARAM(wParam) / WHEEL_DELTA;
        if (owner_.zoom_ > 0)
            scrollTo(scrollX_, scrollY_ - notches * 3 * scrollStep);
        else if (notches != 0)
            OnKey(notches < 0 ? VK_NEXT : VK_PRIOR);
        return 0;
    }
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

winPrintPreview::winPrintPreview(winFrame& frame, winCommandTarget& view, std::unique_ptr<winPrintable> printable,
                                 HDC printer)
    : frame_(frame), view_(view), printable_(std::move(printable)), printer_(printer),
      pages_(std::make_unique<Pages>(*this))
{
}

winPrintPreview::~winPrintPreview()
{
    close();
    if (barFont_)
        DeleteObject(barFont_);
}

const wchar_t* winPrintPreview::className() const
{
    return L"winPrintPreview";
}

void winPrintPreview::PreRegisterClass(WNDCLASSEXW& wc)
{
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
}

bool winPrintPreview::create()
{
    if (!printable_ || !printer_)
        return false;
    pageCount_ = std::max<std::size_t>(printable_->beginPrinting(printer_), 1);
    if (!createWindow(WS_EX_CONTROLPARENT, L"", WS_CHILD | WS_CLIPCHILDREN, 0, 0, 0, 0, frame_.hwnd(), nullptr))
        return false;
    createBar();
    if (!pages_->create(hwnd())) {
        DestroyWindow(hwnd());
        return false;
    }
    savedMessage_ = frame_.messageText();
    frame_.setViewOverlay(hwnd(), this);
    updateControls();
    return true;
}

void winPrintPreview::close()
{
    // without a window the frame is gone or was given its view back already
    if (hwnd()) {
        frame_.setViewOverlay(nullptr, nullptr);
        frame_.setMessageText(savedMessage_);
        DestroyWindow(hwnd());
    }
    // the printable lets go of the printer before the printer goes
    printable_.reset();
    if (printer_)
        DeleteDC(printer_);
    printer_ = nullptr;
}

void winPrintPreview::createBar()
{
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    barFont_ = CreateFontIndirectW(&metrics.lfMessageFont);
    HDC dc = GetDC(hwnd());
    HGDIOBJ old = SelectObject(dc, barFont_);
    TEXTMETRICW tm = {};
    GetTextMetricsW(dc, &tm);
    int buttonHeight = tm.tmHeight * 7 / 4, pad = tm.tmAveCharWidth * 2;
    barHeight_ = buttonHeight + 8;
    auto widthOf = [&](const std::wstring& text) {
        RECT r = {};
        DrawTextW(dc, text.c_str(), int(text.size()), &r, DT_CALCRECT | DT_SINGLELINE);
        return int(r.right) + 2 * pad;
    };
    int x = 4;
    for (const auto& b : barButtons) {
        std::wstring text = winText::load(b.text);
        int width = widthOf(text);
        if (b.id == pagesButton)
            width = std::max(width, widthOf(winText::load(WIN_IDS_PREVIEW_ONE)));
        HWND button = CreateWindowExW(0, L"BUTTON", text.c_str(), WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, x, 4, width,
                                      buttonHeight, hwnd(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(b.id)),
                                      GetModuleHandleW(nullptr), nullptr);
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(barFont_), FALSE);
        x += width + 4;
    }
    HWND label =
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOPREFIX | SS_CENTERIMAGE, x + 8, 4,
                        widthOf(winText::formatId(WIN_IDS_PAGES_OF, {L"8888", L"8888", L"8888"})), buttonHeight, hwnd(),
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(pageLabel)), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(barFont_), FALSE);
    SelectObject(dc, old);
    ReleaseDC(hwnd(), dc);
}

std::size_t winPrintPreview::pagesShown() const
{
    std::size_t wanted = twoPages_ && zoom_ == 0 ? 2 : 1;
    return std::min(wanted, pageCount_ - std::min(page_, pageCount_ - 1));
}

void winPrintPreview::showPage(std::size_t first)
{
    page_ = std::min(first, pageCount_ - 1);
    updateControls();
    pages_->reset();
}

void winPrintPreview::setTwoPages(bool two)
{
    twoPages_ = two;
    updateControls();
    pages_->reset();
}

void winPrintPreview::setZoom(int zoom)
{
    zoom_ = std::clamp(zoom, 0, maxZoom);
    updateControls();
    pages_->reset();
}

void winPrintPreview::updateControls()
{
    if (!hwnd())
        return;
    std::size_t shown = pagesShown(), first = page_ + 1, last = page_ + shown;
    auto enable = [&](int id, bool on) { EnableWindow(GetDlgItem(hwnd(), id), on ? TRUE : FALSE); };
    enable(prevButton, page_ > 0);
    enable(nextButton, last < pageCount_);
    enable(pagesButton, pageCount_ > 1 && zoom_ == 0);
    enable(zoomInButton, zoom_ < maxZoom);
    enable(zoomOutButton, zoom_ > 0);
    SetDlgItemTextW(hwnd(), pagesButton, winText::load(twoPages_ ? WIN_IDS_PREVIEW_ONE : WIN_IDS_PREVIEW_TWO).c_str());
    std::wstring count = std::to_wstring(pageCount_);
    if (shown == 1) {
        SetDlgItemTextW(hwnd(), pageLabel, winText::formatId(WIN_IDS_PAGE_OF, {std::to_wstring(first), count}).c_str());
        frame_.setMessageText(winText::formatId(WIN_IDS_PAGE_NUMBER, {std::to_wstring(first)}));
    } else {
        std::wstring a = std::to_wstring(first), b = std::to_wstring(last);
        SetDlgItemTextW(hwnd(), pageLabel, winText::formatId(WIN_IDS_PAGES_OF, {a, b, count}).c_str());
        frame_.setMessageText(winText::formatId(WIN_IDS_PAGES, {a, b}));
    }
    // a button that greyed itself under the mouse must not keep the keyboard
    HWND focus = GetFocus();
    if (!focus || (GetParent(focus) == hwnd() && !IsWindowEnabled(focus)))
        SetFocus(pages_->hwnd());
}

bool winPrintPreview::relayout(HDC printer)
{
    if (!printer)
        return false;
    HDC old = printer_;
    printer_ = printer;
    pageCount_ = std::max<std::size_t>(printable_->beginPrinting(printer), 1);
    // only now has the printable let go of the old printer
    DeleteDC(old);
    showPage(page_);
    return true;
}

void winPrintPreview::OnSize()
{
    RECT client = {};
    GetClientRect(hwnd(), &client);
    MoveWindow(pages_->hwnd(), 0, barHeight_, client.right, std::max(int(client.bottom) - barHeight_, 0), TRUE);
}

bool winPrintPreview::pressMnemonic(wchar_t letter)
{
    letter = wchar_t(std::towlower(letter));
    for (const auto& b : barButtons) {
        HWND button = GetDlgItem(hwnd(), b.id);
        if (mnemonicOf(textOf(button)) != letter)
            continue;
        if (IsWindowEnabled(button))
            OnButton(b.id);
        return true;
    }
    return false;
}

void winPrintPreview::OnButton(int id)
{
    switch (id) {
    case printButton:
        onCommand(cmdPrint); // closes the preview first
        return;
    case closeButton:
        close();
        return;
    case nextButton:
        showPage(page_ + pagesShown());
        break;
    case prevButton:
        showPage(page_ >= pagesShown() ? page_ - pagesShown() : 0);
        break;
    case pagesButton:
        setTwoPages(!twoPages_);
        break;
    case zoomInButton:
        setZoom(zoom_ + 1);
        break;
    case zoomOutButton:
        setZoom(zoom_ - 1);
        break;
    default:
        return;
    }
    SetFocus(pages_->hwnd());
}

LRESULT winPrintPreview::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_SIZE:
        OnSize();
        return 0;
    case WM_SETFOCUS:
        SetFocus(pages_->hwnd());
        return 0;
    case WM_CLOSE:
        close();
        return 0;
    case WM_COMMAND:
        if (HIWORD(wParam) == BN_CLICKED && lParam) {
            OnButton(LOWORD(wParam));
            return 0;
        }
        break;
    case WM_SYSCHAR:
        if (pressMnemonic(wchar_t(wParam)))
            return 0;
        break;
    default:
        break;
    }
    return winWindow::HandleMessage(msg, wParam, lParam);
}

bool winPrintPreview::onCommand(unsigned id)
{
    switch (id) {
    case cmdPrint:
    case cmdPrintDirect:
        close();
        return view_.onCommand(id);
    case cmdPrintPreview:
        return true;
    case cmdPrintSetup: {
        winApp* app = winApp::instance();
        if (app && app->onFilePrintSetup())
            relayout(app->printer().createDC());
        return true;
    }
    case cmdNew:
    case cmdOpen:
        // the document is about to be replaced: its pages go first
        close();
        return false;
    default:
        if (id >= winFrame::recentFileFirst && id <= winFrame::recentFileLast) {
            close();
            return false;
        }
        // the view is hidden: its commands must not act on it
        winCommandState probe;
        return view_.onUpdateCommand(id, probe);
    }
}

bool winPrintPreview::onUpdateCommand(unsigned id, winCommandState& state)
{
    switch (id) {
    case cmdPrint:
    case cmdPrintDirect:
    case cmdPrintSetup:
        state.enabled = true;
        return true;
    case cmdPrintPreview:
        state.enabled = false;
        return true;
    default:
        if (!view_.onUpdateCommand(id, state))
            return false;
        state.enabled = false;
        return true;
    }
}
