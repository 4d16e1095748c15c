// The output channel into the document's edit view: every text is appended at the end of the view (any
// selection the user made is dropped), with CR-LF line ends, as UTF-16, and cannot be undone.
#pragma once

#include "document/qwzOutput.h"

class qwzEditText;
class winEditView;

class qwzCEditOutput : public qwzOutput
{
public:
    // `view` outlives the channel.
    explicit qwzCEditOutput(winEditView* view) : view_(view) {}

    void write(const utString& text) override;

    // Appends text already converted for the control.
    void writeEditText(const qwzEditText& text);

private:
    // Moves the caret to the end, replaces the empty selection there by `units`, repaints.
    void append(const wchar_t* units);

    winEditView* view_;
};
