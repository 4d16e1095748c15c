// The command-routing interface shared by frame, view, document and application: a command id goes to
// each target in turn (frame -> active view -> document -> application) until one reports it handled.
#pragma once

// What a menu item or a toolbar button shows for a command.
struct winCommandState {
    bool enabled = true;
    bool checked = false;
};

class winCommandTarget
{
public:
    virtual ~winCommandTarget() = default;

    // Carries out command `id`; true when this target handled it, false to pass it on.
    virtual bool onCommand(unsigned id)
    {
        (void)id;
        return false;
    }

    // Sets `state` for command `id` and returns true when this target owns the command; false passes it
    // on. Every command that onCommand handles must be claimed here: the frame greys a command that no
    // target claims, in the menus and on the toolbar.
    virtual bool onUpdateCommand(unsigned id, winCommandState& state)
    {
        (void)id;
        (void)state;
        return false;
    }
};
