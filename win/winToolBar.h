// The frame's toolbar: the common toolbar control, laid out by the frame rather than by itself, docked on
// one side of it, with a gripper in its non-client area by which the user drags it to another side. On
// the left and the right every button sits on a row of its own.
#pragma once

#include "win/winBarState.h"
#include "win/winControl.h"

#include <commctrl.h>

#include <functional>
#include <vector>

class winToolBar : public winControl
{
public:
    using Side = winBarState::Side;

    // Creates the control as visible child `id` of `frame` with the toolbar styles `style` (TBSTYLE_...),
    // docked at the top.
    bool create(HWND frame, unsigned id, DWORD style);

    // The buttons: command ids in order, 0 for a separator; the n-th button that is not a separator shows
    // image n of the image lists.
    bool setButtons(const std::vector<unsigned>& commands);
    // Image size first, then button size: the control resets the button size when the images change.
    void setSizes(SIZE button, SIZE image);
    void setImageLists(HIMAGELIST normal, HIMAGELIST disabled);

    // Lets the user drag the bar to any side of the frame (the gripper appears or goes at once).
    void enableDocking(bool enable);
    bool dockingEnabled() const
    {
        return docking_;
    }

    Side side() const
    {
        return side_;
    }
    // Moves the bar to `side`; its owner lays the frame out again.
    void setSide(Side side);
    // Called when the user has dragged the bar to another side.
    std::function<void(Side)> onDocked;

    // Takes the bar's strip off `client` at its side and moves the bar there; nothing when it is hidden.
    void place(RECT& client);

    // Gives each button the state that `state(command, enabled, checked)` sets.
    void updateButtons(const std::function<void(unsigned, bool&, bool&)>& state);

protected:
    LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;

private:
    bool vertical() const
    {
        return side_ == Side::Left || side_ == Side::Right;
    }
    // The gripper's depth and the margins around the buttons, in pixels of the bar's DPI.
    int scaled(int pixels) const;
    // Puts the buttons into the control, wrapped as the side wants them.
    bool addButtons();
    RECT nonClientMargins() const;
    // The gripper in window coordinates.
    RECT gripperRect() const;
    // True when `screen` is on the gripper of a dockable bar.
    bool OnNcHitTest(POINT screen) const;
    // The gripper's cursor, a drag started on it, followed and ended; each true when it was the gripper's.
    bool OnSetCursor(unsigned hit);
    bool OnNcLButtonDown(unsigned hit);
    bool OnMouseMove(POINT client);
    bool OnLButtonUp();
    void OnNcCalcSize(RECT& rect);
    void OnNcPaint();
    void drag(POINT screen);

    std::vector<unsigned> commands_;
    Side side_ = Side::Top;
    bool docking_ = false;
    bool dragging_ = false;
};
