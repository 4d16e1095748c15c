// The command-routing interface shared by frame, view, document and application: a command id goes to
// each target in turn (frame -> active view -> document -> application) until one reports it handled.
// A target names its commands in one table, each row holding what the command does and when it is
// offered, so that no command can be carried out without being claimed for the menus, or the reverse.
#pragma once

#include <span>

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

// One row of a target's command table: the ids [first, last] it covers, what carries them out and what
// the menus show for them (no update: always enabled).
template <class Target> struct winCommand {
    using Run = void (*)(Target& target, unsigned id);
    using Update = void (*)(Target& target, unsigned id, winCommandState& state);

    winCommand(unsigned id, Run run, Update update = nullptr) : first(id), last(id), run(run), update(update) {}
    winCommand(unsigned first, unsigned last, Run run, Update update)
        : first(first), last(last), run(run), update(update)
    {
    }

    unsigned first, last;
    Run run;
    Update update;
};

template <class Target> using winCommandTable = std::span<const winCommand<Target>>;

// Carries out `id` through the row of `table` that covers it; false when none does.
template <class Target> bool winRunCommand(winCommandTable<Target> table, Target& target, unsigned id)
{
    for (const winCommand<Target>& row : table)
        if (id >= row.first && id <= row.last) {
            row.run(target, id);
            return true;
        }
    return false;
}

// Claims `id` through the row of `table` that covers it and sets its state; false when no row does.
template <class Target>
bool winUpdateCommand(winCommandTable<Target> table, Target& target, unsigned id, winCommandState& state)
{
    for (const winCommand<Target>& row : table)
        if (id >= row.first && id <= row.last) {
            state.enabled = true;
            if (row.update)
                row.update(target, id, state);
            return true;
        }
    return false;
}
