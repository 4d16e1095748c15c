// The frame's status bar: the message pane, which takes what the indicators leave, then one pane per
// indicator, each as wide as its translated text, and a size grip. It aligns itself at the bottom of the
// frame; the frame asks it for its height.
#pragma once

#include "win/winControl.h"

#include <functional>
#include <string>
#include <vector>

class winStatusBar : public winControl
{
public:
    // Creates the control as visible child `id` of `frame`.
    bool create(HWND frame, unsigned id);

    // The indicator panes after the message pane, each named by the string-table id of its text.
    bool setIndicators(const std::vector<unsigned>& ids);
    const std::vector<unsigned>& indicators() const
    {
        return ids_;
    }

    // Pane `pane` (0 is the message pane); setting the same text again does not repaint.
    void setPaneText(int pane, const std::wstring& text);
    std::wstring paneText(int pane) const;

    // Shows each indicator's text while `on(id)` is true, and an empty pane otherwise.
    void updateIndicators(const std::function<bool(unsigned)>& on);
    // The same for the lock keys' indicators (ID_INDICATOR_CAPS, _NUM, _SCRL): on while the key is.
    void updateKeyIndicators();

    // Takes the bar's height off the bottom of `client` and lays out the panes; nothing when hidden.
    void place(RECT& client);

private:
    void layoutPanes();

    std::vector<unsigned> ids_;
    std::vector<std::wstring> texts_;
};
