// The About box (dialog 103): product name and version, copyright (first two lines bold), build date,
// the requested and used languages with the time locale, and the trademark lines, all translated.
#pragma once

#include "app/qwzCDialog.h"
#include "foundation/utString.h"
#include "win/winHandles.h"

class qwzCAboutDlg : public qwzCDialog
{
public:
    explicit qwzCAboutDlg(HWND parent = nullptr, winServices* services = nullptr);

protected:
    bool OnInitDialog() override;

private:
    winFont boldFont_;
};
