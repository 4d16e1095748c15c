// The Go To Line dialog: the label is rebuilt from string 252 with the range every time it opens.
#include "document/qwzCGoToLineDlg.h"

#include "app/qwzCText.h"
#include "res/resource.h"
#include "resourceIds.h"
#include "win/winDataExchange.h"

qwzCGoToLineDlg::qwzCGoToLineDlg(HWND parent, winServices* services) : qwzCDialog(IDD_GOTO_LINE, parent, services)
{
    translatedControls.push_back(IDOK);
    translatedControls.push_back(IDCANCEL);
}

bool qwzCGoToLineDlg::OnInitDialog()
{
    if (!qwzCDialog::OnInitDialog())
        return false;
    setItemText(IDC_GOTO_LINE_LABEL, qwzMessage(IDS_GOTO_LINE_RANGE, rangeMin_, rangeMax_));
    return true;
}

void qwzCGoToLineDlg::doDataExchange(winDataExchange& dx)
{
    dx.exchangeInt(IDC_GOTO_LINE_NUMBER, line_);
}
