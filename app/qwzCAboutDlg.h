// The About box (dialog 103): product name and version, copyright (first two lines bold), build date,
// the requested and used languages with the time locale, and the trademark lines, all translated.
#pragma once

#include "app/qwzCDialog.h"
#include "foundation/utString.h"

class qwzCAboutDlg : public qwzCDialog
{
public:
    explicit qwzCAboutDlg(HWND parent = nullptr);
    ~qwzCAboutDlg() override;

    // The copyright text: the version record's display name, the notice up to `year`, "All rights
    // reserved", translated, one per line.
    static utString copyrightText(int year);

protected:
    bool OnInitDialog() override;

private:
    HFONT boldFont_ = nullptr;
};
