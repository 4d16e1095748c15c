// The status bar's message pane as the frame keeps it: the message ("Ready" at first), kept by a frame
// without a status bar too, and a prompt shown over it while a menu item or a button is under the
// pointer. A message set while a prompt shows waits under it; ending the prompt shows it again.
#pragma once

#include <string>

class winStatusBar;

class winMessagePane
{
public:
    // The bar that shows the pane (null: none), from the next message or prompt on.
    void setBar(winStatusBar* bar)
    {
        bar_ = bar;
    }

    const std::wstring& message() const
    {
        return message_;
    }
    void setMessage(const std::wstring& text);

    // Shows `prompt` in the pane until endPrompt.
    void showPrompt(const std::wstring& prompt);
    // Shows the message again; nothing when no prompt shows.
    void endPrompt();

private:
    winStatusBar* bar_ = nullptr;
    std::wstring message_;
    bool prompting_ = false;
};
