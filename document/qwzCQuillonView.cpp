// The edit view of Quillon's document. Line numbers of Go To are the control's display lines, which with
// word wrapping are not the file's lines.
#include "document/qwzCQuillonView.h"

#include "document/qwzCGoToLineDlg.h"
#include "document/qwzCQuillonDoc.h"
#include "document/qwzWordBreak.h"
#include "resourceIds.h"
#include "win/winApp.h"

namespace
{

static_assert(qwzWordBreak::Left == WB_LEFT && qwzWordBreak::Right == WB_RIGHT &&
              qwzWordBreak::IsDelimiter == WB_ISDELIMITER);

int CALLBACK wordBreak(LPWSTR text, int index, int count, int action)
{
    return qwzWordBreak::find(reinterpret_cast<const char16_t*>(text), index, count, action);
}

} // namespace

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
    // words end at spaces and tabs, found within the line at hand: appending to a big text stays cheap
    SendMessageW(hwnd(), EM_SETWORDBREAKPROC, 0, reinterpret_cast<LPARAM>(wordBreak));
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

namespace
{

constexpr unsigned wholeTextCommands[] = {ID_FILE_SAVE,         ID_FILE_SAVE_AS,       ID_FILE_PRINT,
                                          ID_FILE_PRINT_DIRECT, ID_FILE_PRINT_PREVIEW, ID_EDIT_FIND,
                                          ID_EDIT_GOTO_LINE};

} // namespace

bool qwzCQuillonView::waitsForText(unsigned id) const
{
    const auto* doc = static_cast<const qwzCQuillonDoc*>(document());
    if (!doc || !doc->loading())
        return false;
    for (unsigned command : wholeTextCommands)
        if (command == id)
            return true;
    return false;
}

void qwzCQuillonView::OnControlNotify(unsigned code)
{
    auto* doc = static_cast<qwzCQuillonDoc*>(document());
    // the loader's own appends are not the user's edits
    if (code == EN_CHANGE && doc && doc->appending())
        return;
    winEditView::OnControlNotify(code);
    if (code == EN_CHANGE && doc)
        doc->noteEdit();
}

bool qwzCQuillonView::onCommand(unsigned id)
{
    // an accelerator reaches here even when its menu item is greyed
    if (waitsForText(id))
        return true;
    if (id == goToLineCommand) {
        onGoToLine();
        return true;
    }
    return winEditView::onCommand(id);
}

bool qwzCQuillonView::onUpdateCommand(unsigned id, winCommandState& state)
{
    if (waitsForText(id)) {
        state.enabled = false;
        return true;
    }
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
