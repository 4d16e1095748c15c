// A dialog from a numeric resource template, modal (doModal) or modeless (create). The object travels
// through the init parameter and lives in DWLP_USER; the dialog procedure only dispatches. OK validates
// through the data exchange first: a refused field keeps the dialog open.
#pragma once

#include <windows.h>

#include <string>

class winDataExchange;
class winServices;

class winDialog
{
public:
    // A dialog from template `templateId`, owned by `parent` (may be null). Its message boxes and a
    // modeless dialog's keyboard go through `services`; without them, through the system directly.
    explicit winDialog(unsigned templateId, HWND parent = nullptr, winServices* services = nullptr);
    winDialog(const winDialog&) = delete;
    winDialog& operator=(const winDialog&) = delete;
    // Destroys a modeless dialog that is still open.
    virtual ~winDialog();

    // Runs the dialog modally; IDOK, IDCANCEL (or what endDialog gave), -1 when it could not be made.
    INT_PTR doModal();
    // Creates the dialog modeless and visible, its keyboard going through the message loop's
    // IsDialogMessage; false on failure.
    bool create();

    winServices* services() const
    {
        return services_;
    }

    HWND hwnd() const
    {
        return hwnd_;
    }
    unsigned templateId() const
    {
        return templateId_;
    }
    // The code the dialog ended with (0 while open).
    INT_PTR result() const
    {
        return result_;
    }

    // Closes the dialog with `result` (EndDialog when modal, DestroyWindow when modeless).
    void endDialog(INT_PTR result);

    // Saving (true): reads and validates the controls into the members; false when a field was refused
    // (its message shown, the field selected). Loading (false): puts the members into the controls.
    bool updateData(bool saveAndValidate);

    // The text of control `id`, or of the dialog itself when `id` is 0.
    std::wstring itemText(int id) const;
    void setItemText(int id, const std::wstring& text);
    // The translation hook: replaces the text of control `id` (0: the caption) by its translation through
    // the application's translator; an empty text is left alone.
    void translateItem(int id);

protected:
    // Handles one message; the result is the dialog procedure's (TRUE when handled).
    virtual INT_PTR HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam);
    // After the controls exist: loads the members into them. True lets the system set the focus.
    virtual bool OnInitDialog();
    // OK: validates (updateData(true)) and closes with IDOK only when every field was accepted.
    virtual void OnOK();
    // Cancel: closes with IDCANCEL.
    virtual void OnCancel();
    // Other commands and control notifications; true when handled.
    virtual bool OnCommand(unsigned id, unsigned code, HWND control);
    // Exchanges the members with the controls (dx.exchangeInt, dx.exchangeText); the default has none.
    virtual void doDataExchange(winDataExchange& dx);
    // The dialog could not be made (`error` from the system): the place to tell the user. The default
    // tells nothing.
    virtual void OnCreateFailed(DWORD error);

private:
    static INT_PTR CALLBACK DialogProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

    unsigned templateId_;
    HWND parent_;
    winServices* services_;
    HWND hwnd_ = nullptr;
    bool modal_ = false;
    INT_PTR result_ = 0;
};
