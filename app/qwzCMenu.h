// A menu loaded from the resources with every item's text put through the application's catalog: the
// top-level items and, walking the submenus, every item that is not a separator.
#pragma once

#include <windows.h>

class qwzCMenu
{
public:
    qwzCMenu() = default;
    qwzCMenu(const qwzCMenu&) = delete;
    qwzCMenu& operator=(const qwzCMenu&) = delete;
    ~qwzCMenu();

    // Destroys any menu held, loads menu `menuId` and translates it; false (nothing held) on failure.
    bool load(unsigned menuId);
    HMENU handle() const
    {
        return menu_;
    }
    // Gives the menu away (to a window, which destroys it with itself).
    HMENU detach();

private:
    static bool translateItem(HMENU menu, int position);
    static bool translateSubmenu(HMENU menu);

    HMENU menu_ = nullptr;
};
