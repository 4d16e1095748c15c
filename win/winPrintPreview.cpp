// The print preview: a bar of push buttons over the scrolling page area (winPreviewPages), the pages
// shown and the commands it answers while it stands in for the view.
#include "win/winPrintPreview.h"

#include "win/winIds.h"
#include "win/winPrintable.h"
#include "win/winPrinter.h"
#include "win/winServices.h"
#include "win/winText.h"
#include "win/winViewHost.h"

#include <algorithm>
#include <cwctype>
#include <utility>

namespace
{

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

} // namespace

winPrintPreview::winPrintPreview(winViewHost& frame, winCommandTarget& view, winServices& services,
                                 std::unique_ptr<winPrintable> printable, winOwnedDC printer)
    : frame_(frame), view_(view), services_(services), printer_(std::move(printer)), printable_(std::move(printable))
{
}

winPrintPreview::~winPrintPreview()
{
    close();
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
    pageCount_ = std::max<std::size_t>(printable_->beginPrinting(printer_.get()), 1);
    if (!createWindow(WS_EX_CONTROLPARENT, L"", WS_CHILD | WS_CLIPCHILDREN, 0, 0, 0, 0, frame_.hostWindow(), nullptr))
        return false;
    createBar();
    if (!pages_.create(hwnd())) {
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
    printer_.reset();
}

void winPrintPreview::createBar()
{
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    barFont_.reset(CreateFontIndirectW(&metrics.lfMessageFont));
    winWindowDC window(hwnd());
    HDC dc = window.get();
    winSelection font(dc, barFont_.get());
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
        SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(barFont_.get()), FALSE);
        x += width + 4;
    }
    HWND label =
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOPREFIX | SS_CENTERIMAGE, x + 8, 4,
                        widthOf(winText::formatId(WIN_IDS_PAGES_OF, {L"8888", L"8888", L"8888"})), buttonHeight, hwnd(),
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(pageLabel)), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(barFont_.get()), FALSE);
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
    pages_.reset();
}

void winPrintPreview::setTwoPages(bool two)
{
    twoPages_ = two;
    updateControls();
    pages_.reset();
}

void winPrintPreview::setZoom(int zoom)
{
    zoom_ = std::clamp(zoom, 0, maxZoom);
    updateControls();
    pages_.reset();
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
        SetFocus(pages_.hwnd());
}

bool winPrintPreview::relayout(winOwnedDC printer)
{
    if (!printer)
        return false;
    winOwnedDC old = std::exchange(printer_, std::move(printer));
    pageCount_ = std::max<std::size_t>(printable_->beginPrinting(printer_.get()), 1);
    // only now has the printable let go of the old printer, which goes here
    old.reset();
    showPage(page_);
    return true;
}

void winPrintPreview::OnSize()
{
    RECT client = {};
    GetClientRect(hwnd(), &client);
    MoveWindow(pages_.hwnd(), 0, barHeight_, client.right, std::max(int(client.bottom) - barHeight_, 0), TRUE);
}

bool winPrintPreview::pressMnemonic(wchar_t letter)
{
    letter = wchar_t(std::towlower(letter));
    for (const auto& b : barButtons) {
        HWND button = GetDlgItem(hwnd(), b.id);
        if (mnemonicOf(winText::windowText(button)) != letter)
            continue;
        if (IsWindowEnabled(button))
            OnButton(b.id);
        return true;
    }
    return false;
}

void winPrintPreview::OnPagesKey(UINT key)
{
    switch (key) {
    case VK_ESCAPE:
        OnButton(closeButton);
        break;
    case VK_NEXT:
        OnButton(nextButton);
        break;
    case VK_PRIOR:
        OnButton(prevButton);
        break;
    case VK_HOME:
        showPage(0);
        break;
    case VK_END:
        showPage(pageCount_ - 1);
        break;
    case VK_ADD:
    case VK_OEM_PLUS:
        OnButton(zoomInButton);
        break;
    case VK_SUBTRACT:
    case VK_OEM_MINUS:
        OnButton(zoomOutButton);
        break;
    default:
        break;
    }
}

void winPrintPreview::OnButton(int id)
{
    switch (id) {
    case printButton:
        onCommand(ID_FILE_PRINT); // closes the preview first
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
    SetFocus(pages_.hwnd());
}

LRESULT winPrintPreview::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_SIZE:
        OnSize();
        return 0;
    case WM_SETFOCUS:
        SetFocus(pages_.hwnd());
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

winCommandTable<winPrintPreview> winPrintPreview::commands()
{
    using Preview = winPrintPreview;
    static const auto printClosed = [](Preview& preview, unsigned id) {
        preview.close();
        preview.view_.onCommand(id);
    };
    static const winCommand<Preview> table[] = {
        {ID_FILE_PRINT, printClosed},
        {ID_FILE_PRINT_DIRECT, printClosed},
        {ID_FILE_PRINT_PREVIEW, [](Preview&, unsigned) {},
         [](Preview&, unsigned, winCommandState& state) { state.enabled = false; }},
        // the pages are laid out again for the printer chosen
        {ID_FILE_PRINT_SETUP,
         [](Preview& preview, unsigned) {
             if (preview.services_.onFilePrintSetup())
                 preview.relayout(preview.services_.printer().createDC());
         }},
    };
    return table;
}

bool winPrintPreview::onCommand(unsigned id)
{
    if (winRunCommand(commands(), *this, id))
        return true;
    // the document is about to be replaced: its pages go first, and the command goes on
    if (id == ID_FILE_NEW || id == ID_FILE_OPEN || (id >= ID_FILE_MRU_FILE1 && id <= ID_FILE_MRU_LAST)) {
        close();
        return false;
    }
    // the view is hidden: its commands must not act on it
    winCommandState probe;
    return view_.onUpdateCommand(id, probe);
}

bool winPrintPreview::onUpdateCommand(unsigned id, winCommandState& state)
{
    if (winUpdateCommand(commands(), *this, id, state))
        return true;
    if (!view_.onUpdateCommand(id, state))
        return false;
    state.enabled = false;
    return true;
}
