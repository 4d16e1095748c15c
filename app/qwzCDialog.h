// The base of Quillon's dialogs: when the dialog opens, the texts of the listed controls and then the
// caption are put through the application's catalog, so that dialog resources stay English. A dialog
// that cannot be made says so in a translated message box.
#pragma once

#include <deque>

#include "win/winDialog.h"

class qwzCDialog : public winDialog
{
public:
    explicit qwzCDialog(unsigned dialogId, HWND parent = nullptr, winServices* services = nullptr)
        : winDialog(dialogId, parent, services)
    {
    }

protected:
    // The framework's initialisation, then the translation; returns the framework's result.
    bool OnInitDialog() override;
    INT_PTR HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;
    // A WM_NOTIFY from a control; true when handled, with the dialog procedure's result in `result`.
    virtual bool OnNotify(const NMHDR& header, LRESULT& result);

    // Tells the user, naming the rich-edit library when that is what is missing.
    void OnCreateFailed(DWORD error) override;

    // Controls whose texts are translated at initialisation, in order; an empty text is left alone.
    std::deque<int> translatedControls;
    // Set by dialogs that hold a rich-edit control (a link control): without the library they cannot open.
    bool usesRichEdit = false;
};
