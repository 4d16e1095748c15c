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

bool qwzCEditOutput::writeFileText(std::unique_ptr<char[]> bytes, std::size_t length, std::size_t units)
{
    HWND edit = view_ ? view_->hwnd() : nullptr;
    if (edit == nullptr)
        return false;
    if (GetWindowTextLengthW(edit) != 0) {
        qwzEditText text;
        if (!text.assign(bytes.get(), length))
            return false;
        bytes.reset();
        writeEditText(text);
        return true;
    }
    // the control's own buffer: moveable local memory that it frees with itself
    HLOCAL buffer = LocalAlloc(LMEM_MOVEABLE, (units + 1) * sizeof(char16_t));
    if (buffer == nullptr)
        return false;
    auto* out = static_cast<char16_t*>(LocalLock(buffer));
    qwzEditText::convert(bytes.get(), length, out);
    LocalUnlock(buffer);
    bytes.reset();
    HLOCAL previous = reinterpret_cast<HLOCAL>(SendMessageW(edit, EM_GETHANDLE, 0, 0));
    SendMessageW(edit, EM_SETHANDLE, reinterpret_cast<WPARAM>(buffer), 0);
    if (previous != nullptr && previous != buffer)
        LocalFree(previous);
    // as after an insertion: caret at the end, shown
    const LPARAM end = GetWindowTextLengthW(edit);
    SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(end), end);
    SendMessageW(edit, EM_SCROLLCARET, 0, 0);
    InvalidateRect(edit, nullptr, FALSE);
    return true;
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
