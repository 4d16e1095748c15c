// The output channel into the document's edit view: every text is appended at the end of the view (any
// selection the user made is dropped), with CR-LF line ends, as UTF-16, and cannot be undone.
#pragma once

#include <cstddef>
#include <memory>

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

    // Appends a file's UTF-8 bytes, converted in one pass; `units` is their qwzEditText::unitCount. The
    // bytes are freed as soon as they are converted. Into an empty view the text is converted straight
    // into a buffer that the control takes over (EM_SETHANDLE), so that it never exists twice in UTF-16.
    // False when memory is short (nothing appended).
    bool writeFileText(std::unique_ptr<char[]> bytes, std::size_t length, std::size_t units);

private:
    // Moves the caret to the end, replaces the empty selection there by `units`, repaints.
    void append(const wchar_t* units);

    winEditView* view_;
};
