// The frame's two bars as a subclass hands them over (either may be missing): which shows, where they
// go in the client area, and the state kept in the settings (each shown or hidden, the toolbar's side).
// A toolbar that steps aside while an overlay brings its own bar still counts as the user's choice.
#pragma once

#include <windows.h>

#include <string>

class winStatusBar;
class winToolBar;

class winFrameBars
{
public:
    void set(winToolBar* toolBar, winStatusBar* statusBar)
    {
        toolBar_ = toolBar;
        statusBar_ = statusBar;
    }
    winToolBar* toolBar() const
    {
        return toolBar_;
    }
    winStatusBar* statusBar() const
    {
        return statusBar_;
    }

    // The window of bar `barId` (ID_VIEW_TOOLBAR, ID_VIEW_STATUS_BAR); null when there is no such bar.
    HWND window(unsigned barId) const;
    // Whether the bar shows, by its style: a bar of a frame not yet shown counts as shown.
    bool visible(unsigned barId) const;
    // Whether the user chose to see the bar: shown, or stepped aside for an overlay.
    bool chosen(unsigned barId) const;
    // Shows or hides the bar; false when there is no such bar or it already is so.
    bool show(unsigned barId, bool show);
    // Steps the toolbar aside while an overlay shows (when it showed), and back when it goes.
    void stepAside(bool overlay);
    bool steppedAside() const
    {
        return toolBarAside_;
    }

    // Places the bars inside `client` (the status bar outermost) and shrinks it to what is left.
    void layout(RECT& client) const;

    // The state under settings key `appKey`, for a frame with both bars.
    void save(const std::wstring& appKey) const;
    void load(const std::wstring& appKey);

private:
    winToolBar* toolBar_ = nullptr;
    winStatusBar* statusBar_ = nullptr;
    bool toolBarAside_ = false;
};
