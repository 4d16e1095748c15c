// One pass of data exchange between a dialog's members and its controls. The first refused field ends
// the pass: its message is shown once, the field gets the focus with its text selected, and every later
// exchange of the pass does nothing.
#pragma once

#include <windows.h>

#include <string>

class winServices;

class winDataExchange
{
public:
    // A pass over the controls of `dialog`; a refusal is told through `services` (the system's message
    // box without them).
    winDataExchange(HWND dialog, winServices* services, bool saveAndValidate);

    // True when reading controls into members, false when filling controls.
    bool saveAndValidate() const
    {
        return save_;
    }
    // True once a field was refused.
    bool failed() const
    {
        return failed_;
    }

    // An integer field: writes `value` as decimal text, or reads it back; text that is not an integer
    // (blanks around it allowed) is refused with "Enter an integer." and `value` stays unchanged.
    void exchangeInt(int controlId, int& value);
    // A text field, unvalidated.
    void exchangeText(int controlId, std::wstring& value);

    // Parses an optionally signed decimal integer with optional blanks around it; false for anything
    // else, including an empty text and a value outside int.
    static bool parseInt(const std::wstring& text, int& value);

    // Refuses field `controlId` with string-table message `messageId` (shown translated).
    void fail(int controlId, unsigned messageId);

private:
    HWND dialog_;
    winServices* services_;
    bool save_;
    bool failed_ = false;
};
