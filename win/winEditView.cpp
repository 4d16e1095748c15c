// The edit view: the EDIT control, its commands and Find. The text is read in one GetWindowTextW call
// and searched in place; no per-line work happens anywhere.
#include "win/winEditView.h"

#include "win/winHandles.h"
#include "win/winIds.h"
#include "win/winPrintJob.h"
#include "win/winPrintPreview.h"
#include "win/winPrinter.h"
#include "win/winServices.h"
#include "win/winText.h"
#include "win/winTextPrinter.h"
#include "win/winViewHost.h"

#include <algorithm>

namespace
{

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

// An edit command that is the control's own message.
template <UINT message, LPARAM lParam = 0> void sendToControl(winEditView& view, unsigned)
{
    SendMessageW(view.hwnd(), message, 0, lParam);
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
        if (services_)
            services_->removeModelessDialog(findDialog_);
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

bool winEditView::create(winViewHost& host)
{
    host_ = &host;
    hwnd_ = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"", windowStyle(), 0, 0, 0, 0, host.hostWindow(),
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

winCommandTable<winEditView> winEditView::commands()
{
    using View = winEditView;
    static const auto hasSelection = [](View& view, unsigned, winCommandState& state) {
        size_t start = 0, end = 0;
        view.selection(start, end);
        state.enabled = start != end;
    };
    static const auto hasText = [](View& view, unsigned, winCommandState& state) {
        state.enabled = GetWindowTextLengthW(view.hwnd_) > 0;
    };
    static const winCommand<View> table[] = {
        {ID_EDIT_UNDO, sendToControl<EM_UNDO>,
         [](View& view, unsigned, winCommandState& state) {
             state.enabled = SendMessageW(view.hwnd_, EM_CANUNDO, 0, 0) != 0;
         }},
        {ID_EDIT_CUT, sendToControl<WM_CUT>, hasSelection},
        {ID_EDIT_COPY, sendToControl<WM_COPY>, hasSelection},
        {ID_EDIT_CLEAR, sendToControl<WM_CLEAR>, hasSelection},
        {ID_EDIT_PASTE, sendToControl<WM_PASTE>,
         [](View&, unsigned, winCommandState& state) {
             state.enabled = IsClipboardFormatAvailable(CF_UNICODETEXT) != 0;
         }},
        {ID_EDIT_SELECT_ALL, sendToControl<EM_SETSEL, -1>, hasText},
        {ID_EDIT_FIND, [](View& view, unsigned) { view.openFindDialog(); }, hasText},
        // an empty document prints one empty page; no printer is told when chosen
        {ID_FILE_PRINT, [](View& view, unsigned) { view.print(false); }},
        {ID_FILE_PRINT_DIRECT, [](View& view, unsigned) { view.print(true); }},
        {ID_FILE_PRINT_PREVIEW, [](View& view, unsigned) { view.printPreview(); }},
    };
    return table;
}

bool winEditView::onCommand(unsigned id)
{
    return winRunCommand(commands(), *this, id);
}

bool winEditView::onUpdateCommand(unsigned id, winCommandState& state)
{
    return winUpdateCommand(commands(), *this, id, state);
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
    if (services_)
        services_->addModelessDialog(findDialog_);
    return true;
}

void winEditView::OnFindMessage(const FINDREPLACEW& request)
{
    if (request.Flags & FR_DIALOGTERM) {
        if (services_)
            services_->removeModelessDialog(findDialog_);
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
    if (services_)
        services_->messageBox(winText::formatId(WIN_IDS_CANNOT_FIND, {what}), MB_OK | MB_ICONINFORMATION,
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
    int screenDpi = GetDeviceCaps(winWindowDC(nullptr).get(), LOGPIXELSY);
    font.lfHeight = MulDiv(font.lfHeight, GetDeviceCaps(printer, LOGPIXELSY), screenDpi);
    font.lfWidth = 0;
    return font;
}

// Asks about an installed printer before anything else, so no print command ends in silence.
bool winEditView::printerInstalled()
{
    if (winPrinter::installed())
        return true;
    services_->messageBox(winText::load(WIN_IDS_NO_PRINTER), MB_OK | MB_ICONINFORMATION);
    return false;
}

std::wstring winEditView::jobTitle() const
{
    if (std::wstring title = host_ ? host_->documentTitle() : std::wstring(); !title.empty())
        return title;
    return services_ ? services_->appName() : std::wstring();
}

void winEditView::print(bool direct)
{
    if (!services_ || !hwnd_ || !printerInstalled())
        return;
    winPrinter& printer = services_->printer();
    HWND owner = GetParent(hwnd_);
    size_t start = 0, end = 0;
    selection(start, end);
    winPrinter::Job job;
    if (direct)
        job.dc = printer.createDC();
    else if (printer.printDialog(owner, end > start, job) == winPrinter::Answer::Cancelled)
        return;
    if (!job.dc) {
        services_->messageBox(winText::formatId(WIN_IDS_PRINTER_UNUSABLE, {printer.name()}), MB_OK | MB_ICONERROR);
        return;
    }
    std::wstring body = text();
    if (job.selection)
        body = body.substr(std::min(start, body.size()), end - start);
    // declared after the job, so it lets go of the printer before the printer goes
    winTextPrinter printable(std::move(body), [this](HDC dc) { return printerFont(dc); });
    winPrintJob::run(job.dc.get(), printer.name(), printable, jobTitle(), job.fromPage, job.toPage, owner, services_);
}

winPrintPreview* winEditView::preview() const
{
    return preview_ && preview_->hwnd() ? preview_.get() : nullptr;
}

bool winEditView::printPreview()
{
    if (!services_ || !host_ || preview() || !printerInstalled())
        return false;
    winOwnedDC printer = services_->printer().createDC();
    if (!printer) {
        services_->messageBox(winText::formatId(WIN_IDS_PRINTER_UNUSABLE, {services_->printer().name()}),
                              MB_OK | MB_ICONERROR);
        return false;
    }
    // Find Next would search a view nobody sees
    if (findDialog_)
        SendMessageW(findDialog_, WM_COMMAND, IDCANCEL, 0);
    auto printable = std::make_unique<winTextPrinter>(text(), [this](HDC dc) { return printerFont(dc); });
    preview_ = std::make_unique<winPrintPreview>(*host_, *this, *services_, std::move(printable), std::move(printer));
    if (preview_->create())
        return true;
    preview_.reset();
    return false;
}
