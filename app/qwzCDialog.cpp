// Dialog translation: controls first, in the order they were listed, the caption last.
#include "app/qwzCDialog.h"

#include "app/qwzCStaticWithLink.h"
#include "app/qwzCText.h"
#include "resourceIds.h"
#include "win/winServices.h"

namespace
{

void translateWindow(HWND window)
{
    if (!window)
        return;
    std::wstring text = qwzWindowText(window);
    if (text.empty())
        return;
    SetWindowTextW(window, qwzWide(translate(qwzUtf8(text).c_str())).c_str());
}

} // namespace

bool qwzCDialog::OnInitDialog()
{
    bool result = winDialog::OnInitDialog();
    for (int id : translatedControls)
        translateWindow(GetDlgItem(hwnd(), id));
    translateWindow(hwnd());
    return result;
}

INT_PTR qwzCDialog::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_NOTIFY && lParam != 0) {
        LRESULT result = 0;
        if (OnNotify(*reinterpret_cast<const NMHDR*>(lParam), result)) {
            SetWindowLongPtrW(hwnd(), DWLP_MSGRESULT, result);
            return TRUE;
        }
        return FALSE;
    }
    return winDialog::HandleMessage(msg, wParam, lParam);
}

bool qwzCDialog::OnNotify(const NMHDR&, LRESULT&)
{
    return false;
}

void qwzCDialog::OnCreateFailed(DWORD error)
{
    std::wstring text = usesRichEdit && !qwzCStaticWithLink::libraryLoaded()
                            ? qwzMessage(IDS_DIALOG_NEEDS_RICHEDIT)
                            : qwzMessage(IDS_DIALOG_FAILED, static_cast<unsigned long>(error));
    if (winServices* app = services())
        app->messageBox(text, MB_OK | MB_ICONERROR);
    else
        MessageBoxW(nullptr, text.c_str(), L"Quillon", MB_OK | MB_ICONERROR);
}
