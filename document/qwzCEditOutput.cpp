// Appending to the edit view. The caret is moved to the end before every insertion, so text written while
// the user has a selection never replaces it.
#include "document/qwzCEditOutput.h"

#include <windows.h>

#include <memory>

#include "document/qwzEditText.h"
#include "win/winEditView.h"

void qwzCEditOutput::write(const utString& text)
{
    if (text.isNull()) {
        append(L"");
        return;
    }
    // line ends first (count pass, copy pass), then UTF-16: the channel's order
    const char* bytes = text.text();
    const std::size_t length = static_cast<std::size_t>(text.length());
    std::unique_ptr<char[]> withCr(new char[length + qwzEditText::crCount(bytes, length) + 1]);
    std::size_t n = qwzEditText::crlfCopy(bytes, length, withCr.get());
    qwzEditText units;
    if (!units.assign(withCr.get(), n))
        return;
    append(reinterpret_cast<const wchar_t*>(units.text()));
}

void qwzCEditOutput::writeEditText(const qwzEditText& text)
{
    append(reinterpret_cast<const wchar_t*>(text.text()));
}

void qwzCEditOutput::append(const wchar_t* units)
{
    HWND edit = view_ ? view_->hwnd() : nullptr;
    if (edit == nullptr)
        return;
    const LPARAM end = GetWindowTextLengthW(edit);
    SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(end), end);
    SendMessageW(edit, EM_SCROLLCARET, 0, 0);
    SendMessageW(edit, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(units));
    InvalidateRect(edit, nullptr, FALSE);
}
