// Data exchange: integer and text fields, and the refusal of a field that does not parse.
#include "win/winDataExchange.h"

#include "win/winIds.h"
#include "win/winServices.h"
#include "win/winText.h"

#include <climits>

namespace
{

bool isBlank(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n';
}

} // namespace

winDataExchange::winDataExchange(HWND dialog, winServices* services, bool saveAndValidate)
    : dialog_(dialog), services_(services), save_(saveAndValidate)
{
}

bool winDataExchange::parseInt(const std::wstring& text, int& value)
{
    size_t i = 0, n = text.size();
    while (i < n && isBlank(text[i]))
        ++i;
    bool negative = false;
    if (i < n && (text[i] == L'-' || text[i] == L'+'))
        negative = text[i++] == L'-';
    size_t digitsStart = i;
    long long v = 0;
    for (; i < n && text[i] >= L'0' && text[i] <= L'9'; ++i) {
        v = v * 10 + (text[i] - L'0');
        if (v > (long long)INT_MAX + 1)
            return false;
    }
    if (i == digitsStart)
        return false;
    while (i < n && isBlank(text[i]))
        ++i;
    if (i != n)
        return false;
    if (negative)
        v = -v;
    if (v < INT_MIN || v > INT_MAX)
        return false;
    value = int(v);
    return true;
}

void winDataExchange::fail(int controlId, unsigned messageId)
{
    if (failed_)
        return;
    failed_ = true;
    std::wstring text = winText::load(messageId);
    if (services_)
        services_->messageBox(text, MB_OK | MB_ICONEXCLAMATION, dialog_);
    else
        MessageBoxW(dialog_, text.c_str(), nullptr, MB_OK | MB_ICONEXCLAMATION);
    HWND field = GetDlgItem(dialog_, controlId);
    if (field) {
        SetFocus(field);
        SendMessageW(field, EM_SETSEL, 0, -1);
    }
}

void winDataExchange::exchangeInt(int controlId, int& value)
{
    if (failed_)
        return;
    if (!save_) {
        SetDlgItemTextW(dialog_, controlId, std::to_wstring(value).c_str());
        return;
    }
    int parsed = 0;
    if (parseInt(winText::windowText(GetDlgItem(dialog_, controlId)), parsed))
        value = parsed;
    else
        fail(controlId, WIN_IDS_ENTER_INTEGER);
}

void winDataExchange::exchangeText(int controlId, std::wstring& value)
{
    if (failed_)
        return;
    if (save_)
        value = winText::windowText(GetDlgItem(dialog_, controlId));
    else
        SetDlgItemTextW(dialog_, controlId, value.c_str());
}
