// The edit view: the EDIT control, its commands and Find. The text is read in one GetWindowTextW call
// and searched in place; no per-line work happens anywhere.
#include "win/winEditView.h"

#include "win/winApp.h"
#include "win/winDocument.h"
#include "win/winFrame.h"
#include "win/winPrintJob.h"
#include "win/winPrintPreview.h"
#include "win/winText.h"
#include "win/winTextPrinter.h"

#include "resourceIds.h"

#include <algorithm>

namespace
{

enum : unsigned {
    cmdClear = 57632,
    cmdCopy = 57634,
    cmdCut = 57635,
    cmdFind = 57636,
    cmdPaste = 57637,
    cmdSelectAll = 57642,
    cmdUndo = 57643,
    cmdPrint = 57607,
    cmdPrintDirect = 57608,
    cmdPrintPreview = 57609,
};

bool isWordChar(wchar_t c)
{
    return c == L'_' || IsCharAlphaNumericW(c);
}

bool isWholeWord(const std::wstring& text, size_t start, size_t length)
{
    bool before = start > 0 && isWordChar(text[start - 1]);
    bool after = start + length < text.size() && isWordChar(text[start + length]);
    return !before && !after;
}

void lowerInPlace(std::wstring& s)
{
    // CharLowerBuffW maps one unit to one unit, so positions stay valid
    if (!s.empty())
        CharLowerBuffW(s.data(), DWORD(s.size()));
}

} // namespace

winEditView::winEditView() = default;

winEditView::~winEditView()
{
    preview_.reset();
    if (findDialog_) {
        if (winApp* app = winApp::instance())
            app->removeModelessDialog(findDialog_);
        // the dialog may already have gone with its owner, the frame
        if (IsWindow(findDialog_))
            DestroyWindow(findDialog_);
    }
    if (hwnd_ && IsWindow(hwnd_))
        DestroyWindow(hwnd_);
}

DWORD winEditView::windowStyle() const
{
    return WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_NOHIDESEL | ES_WANTRETURN;
}

bool winEditView::OnCreate()
{
    return true;
}

bool winEditView::create(HWND parent)
{
    hwnd_ = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"", windowStyle(), 0, 0, 0, 0, parent,
                            reinterpret_cast<HMENU>(static_cast<UINT_PTR>(paneId)), GetModuleHandleW(nullptr), nullptr);
    if (!hwnd_)
        return false;
    // the default limit (about 30,000 characters) would silently cut a file
    SendMessageW(hwnd_, EM_SETLIMITTEXT, 0x7FFFFFFE, 0);
    return OnCreate();
}

std::wstring winEditView::text() const
{
    if (!hwnd_)
        return {};
    int length = GetWindowTextLengthW(hwnd_);
    if (length <= 0)
        return {};
    std::wstring out(size_t(length) + 1, L'\0');
    int got = GetWindowTextW(hwnd_, out.data(), length + 1);
    out.resize(size_t(std::max(got, 0)));
    return out;
}

bool winEditView::setText(const std::wstring& text)
{
    return hwnd_ && SetWindowTextW(hwnd_, text.c_str());
}

size_t winEditView::textLength() const
{
    int length = hwnd_ ? GetWindowTextLengthW(hwnd_) : 0;
    return size_t(std::max(length, 0));
}

void winEditView::setSelection(size_t start, size_t end)
{
    SendMessageW(hwnd_, EM_SETSEL, WPARAM(start), LPARAM(end));
    SendMessageW(hwnd_, EM_SCROLLCARET, 0, 0);
}

void winEditView::selection(size_t& start, size_t& end) const
{
    DWORD s = 0, e = 0;
    SendMessageW(hwnd_, EM_GETSEL, reinterpret_cast<WPARAM>(&s), reinterpret_cast<LPARAM>(&e));
    start = s;
    end = e;
}

bool winEditView::onCommand(unsigned id)
{
    switch (id) {
    case cmdUndo:
        SendMessageW(hwnd_, EM_UNDO, 0, 0);
        return true;
    case cmdCut:
        SendMessageW(hwnd_, WM_CUT, 0, 0);
        return true;
    case cmdCopy:
        SendMessageW(hwnd_, WM_COPY, 0, 0);
        return true;
    case cmdPaste:
        SendMessageW(hwnd_, WM_PASTE, 0, 0);
        return true;
    case cmdClear:
        SendMessageW(hwnd_, WM_CLEAR, 0, 0);
        return true;
    case cmdSelectAll:
        SendMessageW(hwnd_, EM_SETSEL, 0, -1);
        return true;
    case cmdFind:
        openFindDialog();
        return true;
    case cmdPrint:
    case cmdPrintDirect:
        print(id == cmdPrintDirect);
        return true;
    case cmdPrintPreview:
        printPreview();
        return true;
    default:
        return false;
    }
}

bool winEditView::onUpdateCommand(unsigned id, winCommandState& state)
{
    size_t start = 0, end = 0;
    switch (id) {
    case cmdUndo:
        state.enabled = SendMessageW(hwnd_, EM_CANUNDO, 0, 0) != 0;
        return true;
    case cmdCut:
    case cmdCopy:
    case cmdClear:
        selection(start, end);
        state.enabled = start != end;
        return true;
    case cmdPaste:
        state.enabled = IsClipboardFormatAvailable(CF_UNICODETEXT) != 0;
        return true;
    case cmdSelectAll:
    case cmdFind:
        state.enabled = GetWindowTextLengthW(hwnd_) > 0;
        return true;
    case cmdPrint:
    case cmdPrintDirect:
    case cmdPrintPreview:
        // an empty document prints one empty page; no printer is told when chosen
        state.enabled = true;
        return true;
    default:
        return false;
    }
}

void winEditView::OnControlNotify(unsigned code)
{
    if (code == EN_CHANGE && document_)
        document_->setModified(true);
}

UINT winEditView::findMessage()
{
    static const UINT message = RegisterWindowMessageW(FINDMSGSTRINGW);
    return message;
}

bool winEditView::openFindDialog()
{
    if (findDialog_) {
        SetActiveWindow(findDialog_);
        return true;
    }
    // a short one-line selection is what the user most likely wants to find
    size_t start = 0, end = 0;
    selection(start, end);
    if (end > start && end - start < std::size(findBuffer_)) {
        std::wstring selected = text().substr(start, end - start);
        if (selected.find_first_of(L"\r\n") == std::wstring::npos)
            std::copy(selected.c_str(), selected.c_str() + selected.size() + 1, findBuffer_);
    }
    findRequest_ = {};
    findRequest_.lStructSize = sizeof findRequest_;
    findRequest_.hwndOwner = GetParent(hwnd_);
    findRequest_.Flags = FR_DOWN;
    findRequest_.lpstrFindWhat = findBuffer_;
    findRequest_.wFindWhatLen = WORD(std::size(findBuffer_));
    findDialog_ = FindTextW(&findRequest_);
    if (!findDialog_)
        return false;
    if (winApp* app = winApp::instance())
        app->addModelessDialog(findDialog_);
    return true;
}

void winEditView::OnFindMessage(const FINDREPLACEW& request)
{
    if (request.Flags & FR_DIALOGTERM) {
        if (winApp* app = winApp::instance())
            app->removeModelessDialog(findDialog_);
        findDialog_ = nullptr;
        return;
    }
    if (!(request.Flags & FR_FINDNEXT) || !request.lpstrFindWhat)
        return;
    std::wstring what = request.lpstrFindWhat;
    if (!findText(what, (request.Flags & FR_MATCHCASE) != 0, (request.Flags & FR_WHOLEWORD) != 0,
                  (request.Flags & FR_DOWN) != 0))
        OnTextNotFound(what);
}

void winEditView::OnTextNotFound(const std::wstring& what)
{
    winApp* app = winApp::instance();
    if (app)
        app->messageBox(winText::formatId(WIN_IDS_CANNOT_FIND, {what}), MB_OK | MB_ICONINFORMATION,
                        findDialog_ ? findDialog_ : GetParent(hwnd_));
}

bool winEditView::findText(const std::wstring& what, bool matchCase, bool wholeWord, bool down)
{
    if (what.empty() || !hwnd_)
        return false;
    std::wstring haystack = text();
    if (haystack.size() < what.size())
        return false;
    std::wstring needle = what;
    if (!matchCase) {
        lowerInPlace(haystack);
        lowerInPlace(needle);
    }
    size_t start = 0, end = 0;
    selection(start, end);
    size_t found = std::wstring::npos;
    if (down) {
        for (size_t from = std::min(end, haystack.size());; from = found + 1) {
            found = haystack.find(needle, from);
            if (found == std::wstring::npos || !wholeWord || isWholeWord(haystack, found, needle.size()))
                break;
        }
    } else if (start > 0) {
        for (size_t before = std::min(start, haystack.size()) - 1;; before = found - 1) {
            found = haystack.rfind(needle, before);
            if (found == std::wstring::npos || !wholeWord || isWholeWord(haystack, found, needle.size()))
                break;
            if (found == 0) {
                found = std::wstring::npos;
                break;
            }
        }
    }
    if (found == std::wstring::npos)
        return false;
    setSelection(found, found + needle.size());
    return true;
}

LOGFONTW winEditView::printerFont(HDC printer) const
{
    LOGFONTW font = {};
    HFONT shown = hwnd_ ? reinterpret_cast<HFONT>(SendMessageW(hwnd_, WM_GETFONT, 0, 0)) : nullptr;
    if (!shown || !GetObjectW(shown, sizeof font, &font))
        GetObjectW(GetStockObject(SYSTEM_FIXED_FONT), sizeof font, &font);
    HDC screen = GetDC(nullptr);
    int screenDpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    font.lfHeight = MulDiv(font.lfHeight, GetDeviceCaps(printer, LOGPIXELSY), screenDpi);
    font.lfWidth = 0;
    return font;
}

namespace
{

// Asks about an installed printer before anything else, so no print command ends in silence.
bool printerInstalled(winApp& app)
{
    if (winPrinter::installed())
        return true;
    app.messageBox(winText::load(WIN_IDS_NO_PRINTER), MB_OK | MB_ICONINFORMATION);
    return false;
}

std::wstring jobTitle(const winDocument* document)
{
    if (document && !document->title().empty())
        return document->title();
    winApp* app = winApp::instance();
    return app ? app->appName() : std::wstring();
}

} // namespace

void winEditView::print(bool direct)
{
    winApp* app = winApp::instance();
    if (!app || !hwnd_ || !printerInstalled(*app))
        return;
    HWND owner = GetParent(hwnd_);
    size_t start = 0, end = 0;
    selection(start, end);
    winPrinter::Job job;
    if (direct)
        job.dc = app->printer().createDC();
    else if (app->printer().printDialog(owner, end > start, job) == winPrinter::Answer::Cancelled)
        return;
    if (!job.dc) {
        app->messageBox(winText::formatId(WIN_IDS_PRINTER_UNUSABLE, {app->printer().name()}), MB_OK | MB_ICONERROR);
        return;
    }
    {
        std::wstring body = text();
        if (job.selection)
            body = body.substr(std::min(start, body.size()), end - start);
        winTextPrinter printable(std::move(body), [this](HDC printer) { return printerFont(printer); });
        winPrintJob::run(job.dc, app->printer().name(), printable, jobTitle(document_), job.fromPage, job.toPage,
                         owner);
    }
    // only after the printable has let go of it
    DeleteDC(job.dc);
}

winPrintPreview* winEditView::preview() const
{
    return preview_ && preview_->hwnd() ? preview_.get() : nullptr;
}

bool winEditView::printPreview()
{
    winApp* app = winApp::instance();
    winFrame* frame = app ? app->mainFrame() : nullptr;
    if (!frame || frame->activeView() != this || preview() || !printerInstalled(*app))
        return false;
    HDC printer = app->printer().createDC();
    if (!printer) {
        app->messageBox(winText::formatId(WIN_IDS_PRINTER_UNUSABLE, {app->printer().name()}), MB_OK | MB_ICONERROR);
        return false;
    }
    // Find Next would search a view nobody sees
    if (findDialog_)
        SendMessageW(findDialog_, WM_COMMAND, IDCANCEL, 0);
    auto printable = std::make_unique<winTextPrinter>(text(), [this](HDC printerDC) { return printerFont(printerDC); });
    preview_ = std::make_unique<winPrintPreview>(*frame, *this, std::move(printable), printer);
    if (preview_->create())
        return true;
    preview_.reset();
    return false;
}
