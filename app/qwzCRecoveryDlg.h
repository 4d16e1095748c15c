// The offer of a text that a run which did not end cleanly left behind (dialog 339): the message names
// the document, Restore is the default button, Discard deletes the file, Escape keeps it for next time.
#pragma once

#include <string>

#include "app/qwzCDialog.h"

class qwzCRecoveryDlg : public qwzCDialog
{
public:
    // doModal's answers besides IDOK (Restore) and IDCANCEL (keep for later).
    static constexpr int discardAnswer = 337;

    // `documentName`: the path the text belongs to, or "Untitled".
    qwzCRecoveryDlg(HWND parent, const std::wstring& documentName);

protected:
    bool OnInitDialog() override;
    bool OnCommand(unsigned id, unsigned code, HWND control) override;

private:
    std::wstring documentName_;
};
