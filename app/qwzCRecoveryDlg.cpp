// The recovery offer: its message is string 330 with the document's name, both buttons translated.
#include "app/qwzCRecoveryDlg.h"

#include "app/qwzCText.h"
#include "res/resource.h"
#include "resourceIds.h"

static_assert(qwzCRecoveryDlg::discardAnswer == IDC_RECOVERY_DISCARD, "Discard answers with its own id");

qwzCRecoveryDlg::qwzCRecoveryDlg(HWND parent, const std::wstring& documentName)
    : qwzCDialog(IDD_RECOVERY, parent), documentName_(documentName)
{
    translatedControls.push_back(IDOK);
    translatedControls.push_back(IDC_RECOVERY_DISCARD);
}

bool qwzCRecoveryDlg::OnInitDialog()
{
    bool result = qwzCDialog::OnInitDialog();
    setItemText(IDC_RECOVERY_MESSAGE, qwzMessage(IDS_RECOVERY_OFFER, qwzUtf8(documentName_).c_str()));
    return result;
}

bool qwzCRecoveryDlg::OnCommand(unsigned id, unsigned code, HWND control)
{
    if (id == IDC_RECOVERY_DISCARD && code == BN_CLICKED) {
        endDialog(discardAnswer);
        return true;
    }
    return qwzCDialog::OnCommand(id, code, control);
}
