// The edit view: a multi-line EDIT control that fills the frame's client area and is the only store of
// the document's text. Word wrap comes from the style (no horizontal scroll); the text limit is raised at
// creation so that a big file is never cut. Nothing here walks the text per line. It prints its text (or
// the selection) in its own font with page numbers, and previews it in the frame.
#pragma once

#include "win/winCommandTarget.h"

#include <windows.h>

#include <commdlg.h>

#include <memory>
#include <string>

class winPrintPreview;
class winServices;
class winViewHost;

class winEditView : public winCommandTarget
{
public:
    // The control id of the view inside its frame.
    static constexpr unsigned paneId = 0xE900;

    winEditView();
    winEditView(const winEditView&) = delete;
    winEditView& operator=(const winEditView&) = delete;
    // Closes the Find dialog and destroys the control if they still exist.
    ~winEditView() override;

    // Creates the control as child `paneId` of the host's window, then calls OnCreate; false when either
    // fails. The host is kept: the print preview takes the view's place in it.
    bool create(winViewHost& host);

    // The EDIT control; null before create.
    HWND hwnd() const
    {
        return hwnd_;
    }

    // The application's services; set by the template before create.
    winServices* services() const
    {
        return services_;
    }
    void setServices(winServices* services)
    {
        services_ = services;
    }

    // The whole text in one buffer (CR-LF line ends, as the control holds it).
    std::wstring text() const;
    // Replaces the whole text (WM_SETTEXT: no EN_CHANGE, so the modified flag is untouched).
    bool setText(const std::wstring& text);
    // The text length in UTF-16 units.
    size_t textLength() const;

    // Selects [start, end) and scrolls the caret into view.
    void setSelection(size_t start, size_t end);
    // The current selection [start, end).
    void selection(size_t& start, size_t& end) const;

    // Undo, Cut, Copy, Paste, Clear, Select All, Find, Print, Print Direct and Print Preview.
    bool onCommand(unsigned id) override;
    bool onUpdateCommand(unsigned id, winCommandState& state) override;

    // Opens the Find dialog (or activates it when open); false when it could not be created.
    bool openFindDialog();
    // The Find dialog's window; null when closed.
    HWND findDialog() const
    {
        return findDialog_;
    }
    // The registered FINDMSGSTRING message.
    static UINT findMessage();
    // Handles FINDMSGSTRING (the frame owns the dialog and forwards the message here).
    void OnFindMessage(const FINDREPLACEW& request);

    // Searches for `what` from the selection (down: after it, up: before it), selects and shows the first
    // match. False when there is none; the selection then stays.
    bool findText(const std::wstring& what, bool matchCase, bool wholeWord, bool down);

    // Prints the text: through the Print dialog (all, a page range or the selection), or `direct` on the
    // session's printer without a dialog. Tells the user when there is no printer.
    void print(bool direct);
    // Shows the print preview in the frame; false when it could not (the user was told why).
    bool printPreview();
    // The preview showing now; null when none.
    winPrintPreview* preview() const;
    // The font to print with on `printer`: the view's font scaled from the screen's resolution.
    virtual LOGFONTW printerFont(HDC printer) const;

protected:
    // The control's style; the default is the word-wrapping style with a vertical scroll bar.
    virtual DWORD windowStyle() const;

    // Called after the control exists (set a font here); false makes creation fail.
    virtual bool OnCreate();

    // Called when Find Next finds nothing; the default shows "Cannot find "<text>"".
    virtual void OnTextNotFound(const std::wstring& what);

private:
    static winCommandTable<winEditView> commands();
    // Tells the user when no printer is installed; false then.
    bool printerInstalled();
    // The name of a print job: the title of the document shown, or the application's name.
    std::wstring jobTitle() const;

    HWND hwnd_ = nullptr;
    winServices* services_ = nullptr;
    winViewHost* host_ = nullptr;
    HWND findDialog_ = nullptr;
    FINDREPLACEW findRequest_ = {};
    wchar_t findBuffer_[256] = {};
    std::unique_ptr<winPrintPreview> preview_;
};
