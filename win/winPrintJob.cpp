// The print job and its progress window. The spooler calls the abort procedure while it works, and the
// job calls the same pump between pages, so the window answers throughout; a cancel takes effect at the
// next page with AbortDoc. The abort procedure never says stop itself: some spoolers end the document
// (EndDoc) on that answer, which would print the pages so far as if they were all. One job runs at a
// time: the abort procedure has no parameter to find it by, hence the one pointer below.
#include "win/winPrintJob.h"

#include "win/winHandles.h"
#include "win/winIds.h"
#include "win/winPrintable.h"
#include "win/winServices.h"
#include "win/winText.h"
#include "win/winWindow.h"

#include <algorithm>

namespace
{

class Progress : public winWindow
{
public:
    bool cancelled() const
    {
        return cancelled_;
    }
    bool create(HWND owner, const std::wstring& title, const std::wstring& printerName);
    void setPage(unsigned page, unsigned pages)
    {
        SetWindowTextW(page_,
                       winText::formatId(WIN_IDS_PAGE_OF, {std::to_wstring(page), std::to_wstring(pages)}).c_str());
    }

protected:
    const wchar_t* className() const override
    {
        return L"winPrintProgress";
    }
    void PreRegisterClass(WNDCLASSEXW& wc) override
    {
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    }
    LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override
    {
        if ((msg == WM_COMMAND && LOWORD(wParam) == IDCANCEL) || msg == WM_CLOSE) {
            OnCancel();
            return 0;
        }
        return winWindow::HandleMessage(msg, wParam, lParam);
    }

private:
    // Cancel or the close box: the job stops before its next page; asking twice changes nothing.
    void OnCancel()
    {
        cancelled_ = true;
        EnableWindow(GetDlgItem(hwnd(), IDCANCEL), FALSE);
    }

    HWND child(const wchar_t* cls, const std::wstring& text, DWORD style, int id, int x, int y, int w, int h)
    {
        HWND control =
            CreateWindowExW(0, cls, text.c_str(), WS_CHILD | WS_VISIBLE | style, x, y, w, h, hwnd(),
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
        return control;
    }

    bool cancelled_ = false;
    winFont font_;
    HWND page_ = nullptr;
};

bool Progress::create(HWND owner, const std::wstring& title, const std::wstring& printerName)
{
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    font_.reset(CreateFontIndirectW(&metrics.lfMessageFont));
    int unit = std::max(
        int(metrics.lfMessageFont.lfHeight < 0 ? -metrics.lfMessageFont.lfHeight : metrics.lfMessageFont.lfHeight), 12);
    int line = unit * 3 / 2, width = unit * 26, button = unit * 7;
    RECT frame = {0, 0, width + 2 * unit, unit * 3 + line * 3 + unit * 2};
    DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    AdjustWindowRectEx(&frame, style, FALSE, WS_EX_DLGMODALFRAME);
    RECT around = {};
    GetWindowRect(owner ? owner : GetDesktopWindow(), &around);
    int w = frame.right - frame.left, h = frame.bottom - frame.top;
    if (!createWindow(WS_EX_DLGMODALFRAME, winText::load(WIN_IDS_PRINTING), style, (around.left + around.right - w) / 2,
                      (around.top + around.bottom - h) / 2, w, h, owner, nullptr))
        return false;
    child(L"STATIC", title, SS_PATHELLIPSIS | SS_NOPREFIX, -1, unit, unit, width, line);
    child(L"STATIC", winText::formatId(WIN_IDS_PRINTING_ON, {printerName}), SS_ENDELLIPSIS | SS_NOPREFIX, -1, unit,
          unit + line, width, line);
    page_ = child(L"STATIC", L"", SS_NOPREFIX, -1, unit, unit + line * 2, width, line);
    HWND cancel = child(L"BUTTON", winText::load(WIN_IDS_CANCEL), BS_DEFPUSHBUTTON | WS_TABSTOP, IDCANCEL,
                        unit + (width - button) / 2, unit * 2 + line * 3, button, unit * 2);
    ShowWindow(hwnd(), SW_SHOW);
    SetFocus(cancel);
    return true;
}

Progress* active = nullptr;
int quitCode = 0;
bool quitSeen = false;

// Dispatches what is queued; false once the user has cancelled.
bool pump()
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            // ends the program after the job
            quitSeen = true;
            quitCode = int(msg.wParam);
            continue;
        }
        if (active && active->hwnd() && IsDialogMessageW(active->hwnd(), &msg))
            continue;
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    return !(active && active->cancelled());
}

BOOL CALLBACK abortProc(HDC, int)
{
    pump();
    return TRUE;
}

} // namespace

HWND winPrintJob::progressWindow()
{
    return active ? active->hwnd() : nullptr;
}

winPrintJob::Result winPrintJob::run(HDC printer, const std::wstring& printerName, winPrintable& printable,
                                     const std::wstring& title, unsigned fromPage, unsigned toPage, HWND owner,
                                     winServices* services)
{
    auto tell = [&](unsigned id, std::initializer_list<std::wstring> args) {
        std::wstring text = winText::formatId(id, args);
        if (services)
            services->messageBox(text, MB_OK | MB_ICONERROR, owner);
        else
            MessageBoxW(owner, text.c_str(), nullptr, MB_OK | MB_ICONERROR);
    };
    unsigned pages = unsigned(std::min<std::size_t>(printable.beginPrinting(printer), 0xFFFF));
    unsigned from = std::max(fromPage, 1u), to = std::min(toPage, pages);
    if (from > to) {
        tell(WIN_IDS_PRINT_NO_PAGES, {std::to_wstring(pages)});
        return Result::NothingToPrint;
    }

    Progress progress;
    progress.create(owner, title, printerName);
    if (owner)
        EnableWindow(owner, FALSE);
    active = &progress;
    quitSeen = false;
    // the dialog that asked is gone: let the frame repaint before the spooler is reached
    pump();
    SetAbortProc(printer, abortProc);

    DOCINFOW info = {};
    info.cbSize = sizeof info;
    info.lpszDocName = title.c_str();
    bool failed = StartDocW(printer, &info) <= 0;
    bool cancelled = false;
    for (unsigned page = from; !failed && page <= to; ++page) {
        progress.setPage(page, pages);
        if ((cancelled = !pump()))
            break;
        failed = StartPage(printer) <= 0;
        if (failed)
            break;
        printable.printPage(printer, page - 1);
        failed = EndPage(printer) <= 0;
    }
    if (!failed && !cancelled)
        cancelled = !pump();
    if (failed || cancelled)
        AbortDoc(printer);
    else
        failed = EndDoc(printer) <= 0;

    active = nullptr;
    if (owner)
        EnableWindow(owner, TRUE);
    DestroyWindow(progress.hwnd());
    if (quitSeen)
        PostQuitMessage(quitCode);
    if (failed && !cancelled) {
        tell(WIN_IDS_PRINT_FAILED, {title, printerName});
        return Result::Failed;
    }
    return cancelled ? Result::Cancelled : Result::Printed;
}
