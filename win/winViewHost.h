// What the document, the view and the window that stands in for it (the print preview) need of the frame
// that shows them: its window, caption and message text, and the view's place to lend. The frame
// implements it, so that they depend on this, not on the frame.
#pragma once

#include "win/winCommandTarget.h"

#include <windows.h>

#include <string>

class winViewHost
{
public:
    // The frame's window, the parent of the view.
    virtual HWND hostWindow() const = 0;
    // The title of the document shown; empty when there is none.
    virtual std::wstring documentTitle() const = 0;
    // Recomputes the caption from the document's title.
    virtual void updateTitle() = 0;
    // The status bar's message text.
    virtual std::wstring messageText() const = 0;
    virtual void setMessageText(const std::wstring& text) = 0;
    // While background work goes on (text still arriving), the pointer shows the busy arrow.
    virtual void setBackgroundWork(bool working) = 0;
    // Brings the bars' states up to date now, as when the message loop falls idle.
    virtual void onIdleUpdate() = 0;
    // Shows `overlay` in the view's place and routes the view's share of the commands to `target`; null
    // gives the view back.
    virtual void setViewOverlay(HWND overlay, winCommandTarget* target) = 0;

protected:
    ~winViewHost() = default;
};
