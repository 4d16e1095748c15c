// The frame's bars: visibility by style, layout and the bar state in the settings.
#include "win/winFrameBars.h"

#include "win/winBarState.h"
#include "win/winIds.h"
#include "win/winStatusBar.h"
#include "win/winToolBar.h"

namespace
{

bool shown(HWND window)
{
    // the style, not IsWindowVisible: a bar of a frame not yet shown counts as shown
    return window && (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE);
}

} // namespace

HWND winFrameBars::window(unsigned barId) const
{
    if (barId == ID_VIEW_TOOLBAR && toolBar_)
        return toolBar_->hwnd();
    if (barId == ID_VIEW_STATUS_BAR && statusBar_)
        return statusBar_->hwnd();
    return nullptr;
}

bool winFrameBars::visible(unsigned barId) const
{
    return shown(window(barId));
}

bool winFrameBars::chosen(unsigned barId) const
{
    return visible(barId) || (barId == ID_VIEW_TOOLBAR && toolBarAside_);
}

bool winFrameBars::show(unsigned barId, bool show)
{
    HWND bar = window(barId);
    if (!bar || shown(bar) == show)
        return false;
    ShowWindow(bar, show ? SW_SHOWNA : SW_HIDE);
    return true;
}

void winFrameBars::stepAside(bool overlay)
{
    HWND bar = window(ID_VIEW_TOOLBAR);
    if (!bar)
        return;
    if (overlay && shown(bar)) {
        ShowWindow(bar, SW_HIDE);
        toolBarAside_ = true;
    } else if (!overlay && toolBarAside_) {
        ShowWindow(bar, SW_SHOWNA);
        toolBarAside_ = false;
    }
}

void winFrameBars::layout(RECT& client) const
{
    if (statusBar_)
        statusBar_->place(client);
    if (toolBar_)
        toolBar_->place(client);
}

void winFrameBars::save(const std::wstring& appKey) const
{
    if (!toolBar_ || !statusBar_)
        return;
    winBarState state;
    state.toolBarVisible = chosen(ID_VIEW_TOOLBAR);
    state.toolBarSide = toolBar_->side();
    state.statusBarVisible = visible(ID_VIEW_STATUS_BAR);
    state.save(appKey);
}

void winFrameBars::load(const std::wstring& appKey)
{
    if (!toolBar_ || !statusBar_)
        return;
    winBarState state = winBarState::load(appKey);
    // moving flows every button again: only when the bar is kept elsewhere
    if (toolBar_->dockingEnabled() && state.toolBarSide != toolBar_->side())
        toolBar_->setSide(state.toolBarSide);
    ShowWindow(toolBar_->hwnd(), state.toolBarVisible ? SW_SHOWNA : SW_HIDE);
    ShowWindow(statusBar_->hwnd(), state.statusBarVisible ? SW_SHOWNA : SW_HIDE);
}
