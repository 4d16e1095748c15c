// Dialog base: creation, the dispatching dialog procedure, OK/Cancel and the data-exchange pass.
#include "win/winDialog.h"

#include "win/winControl.h"
#include "win/winDataExchange.h"
#include "win/winServices.h"
#include "win/winText.h"

winDialog::winDialog(unsigned templateId, HWND parent, winServices* services)
    : templateId_(templateId), parent_(parent), services_(services)
{
}

winDialog::~winDialog()
{
    if (hwnd_ && !modal_) {
        if (services_)
            services_->removeModelessDialog(hwnd_);
        SetWindowLongPtrW(hwnd_, DWLP_USER, 0);
        HWND h = hwnd_;
        hwnd_ = nullptr;
        DestroyWindow(h);
    }
}

INT_PTR winDialog::doModal()
{
    modal_ = true;
    result_ = 0;
    SetLastError(ERROR_SUCCESS);
    INT_PTR result = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(templateId_), parent_, DialogProc,
                                     reinterpret_cast<LPARAM>(this));
    if (result == -1)
        OnCreateFailed(GetLastError());
    return result;
}

bool winDialog::create()
{
    modal_ = false;
    result_ = 0;
    SetLastError(ERROR_SUCCESS);
    HWND h = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(templateId_), parent_, DialogProc,
                                reinterpret_cast<LPARAM>(this));
    if (!h) {
        OnCreateFailed(GetLastError());
        return false;
    }
    if (services_)
        services_->addModelessDialog(h);
    ShowWindow(h, SW_SHOW);
    return true;
}

void winDialog::endDialog(INT_PTR result)
{
    result_ = result;
    if (!hwnd_)
        return;
    if (modal_) {
        EndDialog(hwnd_, result);
        return;
    }
    if (services_)
        services_->removeModelessDialog(hwnd_);
    DestroyWindow(hwnd_);
}

bool winDialog::updateData(bool saveAndValidate)
{
    winDataExchange dx(hwnd_, services_, saveAndValidate);
    doDataExchange(dx);
    return !dx.failed();
}

std::wstring winDialog::itemText(int id) const
{
    return winText::windowText(id ? GetDlgItem(hwnd_, id) : hwnd_);
}

void winDialog::setItemText(int id, const std::wstring& text)
{
    HWND item = id ? GetDlgItem(hwnd_, id) : hwnd_;
    if (item)
        SetWindowTextW(item, text.c_str());
}

void winDialog::translateItem(int id)
{
    std::wstring text = itemText(id);
    if (!text.empty())
        setItemText(id, winText::translate(text));
}

INT_PTR winDialog::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_INITDIALOG:
        return OnInitDialog() ? TRUE : FALSE;
    case WM_COMMAND:
        switch (LOWORD(wParam)) {
        case IDOK:
            OnOK();
            return TRUE;
        case IDCANCEL:
            OnCancel();
            return TRUE;
        default:
            return OnCommand(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam)) ? TRUE : FALSE;
        }
    case WM_NOTIFY: {
        LRESULT result = 0;
        if (!winControl::reflectNotify(lParam, result))
            return FALSE;
        SetWindowLongPtrW(hwnd_, DWLP_MSGRESULT, result);
        return TRUE;
    }
    default:
        return FALSE;
    }
}

void winDialog::OnCreateFailed(DWORD) {}

bool winDialog::OnInitDialog()
{
    updateData(false);
    return true;
}

void winDialog::OnOK()
{
    if (updateData(true))
        endDialog(IDOK);
}

void winDialog::OnCancel()
{
    endDialog(IDCANCEL);
}

bool winDialog::OnCommand(unsigned, unsigned, HWND)
{
    return false;
}

void winDialog::doDataExchange(winDataExchange&) {}

INT_PTR CALLBACK winDialog::DialogProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    winDialog* self;
    if (msg == WM_INITDIALOG) {
        self = reinterpret_cast<winDialog*>(lParam);
        self->hwnd_ = hwnd;
        SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
    } else {
        self = reinterpret_cast<winDialog*>(GetWindowLongPtrW(hwnd, DWLP_USER));
    }
    if (!self)
        return FALSE;
    INT_PTR result = self->HandleMessage(msg, wParam, lParam);
    if (msg == WM_NCDESTROY) {
        SetWindowLongPtrW(hwnd, DWLP_USER, 0);
        self->hwnd_ = nullptr;
    }
    return result;
}
