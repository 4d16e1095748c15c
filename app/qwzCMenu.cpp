// Menu translation by position, so that items keep their identifiers and submenus; texts are read up to
// 1024 characters. A failure anywhere stops the walk.
#include "app/qwzCMenu.h"

#include "app/qwzCText.h"

qwzCMenu::~qwzCMenu()
{
    if (menu_)
        DestroyMenu(menu_);
}

HMENU qwzCMenu::detach()
{
    HMENU menu = menu_;
    menu_ = nullptr;
    return menu;
}

bool qwzCMenu::load(unsigned menuId)
{
    if (menu_)
        DestroyMenu(detach());
    menu_ = LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(menuId));
    if (!menu_)
        return false;
    int count = GetMenuItemCount(menu_);
    bool ok = count >= 0;
    for (int i = 0; ok && i < count; ++i) {
        ok = translateItem(menu_, i);
        if (HMENU sub = GetSubMenu(menu_, i); ok && sub)
            ok = translateSubmenu(sub);
    }
    if (!ok)
        DestroyMenu(detach());
    return ok;
}

bool qwzCMenu::translateSubmenu(HMENU menu)
{
    int count = GetMenuItemCount(menu);
    if (count < 0)
        return false;
    for (int i = 0; i < count; ++i) {
        HMENU sub = GetSubMenu(menu, i);
        // separators (identifier 0) are skipped; popups report -1 and are translated
        if (!sub && GetMenuItemID(menu, i) == 0)
            continue;
        if (!translateItem(menu, i) || (sub && !translateSubmenu(sub)))
            return false;
    }
    return true;
}

bool qwzCMenu::translateItem(HMENU menu, int position)
{
    wchar_t text[1025] = {};
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING | MIIM_FTYPE;
    info.dwTypeData = text;
    info.cch = 1024;
    if (!GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info))
        return false;
    if (info.fType & MFT_SEPARATOR)
        return true;
    std::wstring translated = qwzWide(translate(qwzUtf8(text).c_str()));
    MENUITEMINFOW update = {};
    update.cbSize = sizeof update;
    update.fMask = MIIM_STRING;
    update.dwTypeData = translated.data();
    return SetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &update) != 0;
}
