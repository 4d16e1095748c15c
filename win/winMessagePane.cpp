// The message pane: the message and the prompt over it.
#include "win/winMessagePane.h"

#include "win/winStatusBar.h"

void winMessagePane::setMessage(const std::wstring& text)
{
    message_ = text;
    if (bar_ && !prompting_)
        bar_->setPaneText(0, text);
}

void winMessagePane::showPrompt(const std::wstring& prompt)
{
    prompting_ = true;
    if (bar_)
        bar_->setPaneText(0, prompt);
}

void winMessagePane::endPrompt()
{
    if (!prompting_)
        return;
    prompting_ = false;
    if (bar_)
        bar_->setPaneText(0, message_);
}
