// The edit view of Quillon's document. Line numbers of Go To are the control's display lines, which with
// word wrapping are not the file's lines.
#include "document/qwzCQuillonView.h"

#include "document/qwzCGoToLineDlg.h"
#include "document/qwzCQuillonDoc.h"
#include "win/winApp.h"

qwzCQuillonView::~qwzCQuillonView()
{
    if (font_)
        DeleteObject(font_);
}

DWORD qwzCQuillonView::windowStyle() const
{
    return winEditView::windowStyle() & ~static_cast<DWORD>(WS_HSCROLL | ES_AUTOHSCROLL);
}

bool qwzCQuillonView::OnCreate()
{
    if (!winEditView::OnCreate())
        return false;
    // a point font of 100 tenths of a point, sized for the screen
    HDC screen = GetDC(nullptr);
    int height = -MulDiv(100, GetDeviceCaps(screen, LOGPIXELSY), 720);
    ReleaseDC(nullptr, screen);
    font_ = CreateFontW(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                        CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, FIXED_PITCH | FF_MODERN, L"Courier New");
    // without the font the control keeps its default one
    if (font_)
        SendMessageW(hwnd(), WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
    return true;
}

LOGFONTW qwzCQuillonView::printerFont(HDC printer) const
{
    LOGFONTW font = winEditView::printerFont(printer);
    // the screen font is rounded to whole screen pixels; paper gets the 10 pt exactly
    if (font_)
        font.lfHeight = -MulDiv(100, GetDeviceCaps(printer, LOGPIXELSY), 720);
    return font;
}

void qwzCQuillonView::clearView()
{
    if (!hwnd())
        return;
    SendMessageW(hwnd(), EM_SETSEL, 0, -1);
    SendMessageW(hwnd(), EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(L""));
    MSG msg;
    while (PeekMessageW(&msg, hwnd(), 0, 0, PM_REMOVE)) {
        winApp* app = winApp::instance();
        if (app && app->preTranslateMessage(msg))
            continue;
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
}

void qwzCQuillonView::OnControlNotify(unsigned code)
{
    winEditView::OnControlNotify(code);
    if (code == EN_CHANGE)
        if (auto* doc = static_cast<qwzCQuillonDoc*>(document()))
            doc->noteEdit();
}

bool qwzCQuillonView::onCommand(unsigned id)
{
    if (id == goToLineCommand) {
        onGoToLine();
        return true;
    }
    return winEditView::onCommand(id);
}

bool qwzCQuillonView::onUpdateCommand(unsigned id, winCommandState& state)
{
    if (id == goToLineCommand) {
        state.enabled = true;
        return true;
    }
    return winEditView::onUpdateCommand(id, state);
}

void qwzCQuillonView::onGoToLine()
{
    int count = static_cast<int>(SendMessageW(hwnd(), EM_GETLINECOUNT, 0, 0));
    int caretLine = static_cast<int>(SendMessageW(hwnd(), EM_LINEFROMCHAR, static_cast<WPARAM>(-1), 0));
    int line = caretLine + 1;
    if (askLine(count == 0 ? 1 : count, line))
        goToLine(line);
}

bool qwzCQuillonView::askLine(int count, int& line)
{
    qwzCGoToLineDlg dialog(GetParent(hwnd()));
    dialog.setRange(1, count);
    dialog.setLine(line);
    if (dialog.doModal() != IDOK)
        return false;
    line = dialog.getLine();
    return true;
}

void qwzCQuillonView::goToLine(int line)
{
    // the number goes to the control as it is: 0 and negatives included
    long long zeroBased = static_cast<long long>(line) - 1;
    LRESULT index = SendMessageW(hwnd(), EM_LINEINDEX, static_cast<WPARAM>(zeroBased), 0);
    SendMessageW(hwnd(), EM_SETSEL, static_cast<WPARAM>(index), index);
    SendMessageW(hwnd(), EM_SCROLLCARET, 0, 0);
}
