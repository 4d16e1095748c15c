// Quillon's resources where nothing else reads them yet: every command of the main menu has its
// status-bar prompt and tooltip in the string table. What the menu, the accelerators and the dialogs do
// is checked where they are used (the commands in-process, the keys and menus end to end), and the icon
// on the shipped program.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "resourceIds.h"
#include "win/winText.h"

namespace
{

std::wstring loadString(UINT id)
{
    const wchar_t* text = nullptr;
    int len = LoadStringW(GetModuleHandleW(nullptr), id, reinterpret_cast<LPWSTR>(&text), 0);
    return len > 0 ? std::wstring(text, len) : std::wstring();
}

TEST(Resources, EveryMenuCommandHasAPromptAndATooltip)
{
    HMENU menu = LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_MAINFRAME));
    ASSERT_NE(menu, nullptr);
    int commands = 0;
    for (int p = 0; p < GetMenuItemCount(menu); ++p) {
        HMENU popup = GetSubMenu(menu, p);
        for (int i = 0; popup && i < GetMenuItemCount(popup); ++i) {
            UINT id = GetMenuItemID(popup, i);
            if (id == 0 || id == UINT(-1))
                continue; // a separator or a submenu
            ++commands;
            std::string prompt = winText::toUtf8(loadString(id));
            SCOPED_TRACE("command " + std::to_string(id) + ": \"" + prompt + "\"");
            ASSERT_FALSE(prompt.empty());
            if (id == ID_FILE_MRU_FILE1) // the recent files have a prompt only, as the list shows names
                continue;
            size_t cut = prompt.find('\n');
            ASSERT_NE(cut, std::string::npos);
            EXPECT_GT(cut, 0u);
            EXPECT_LT(cut + 1, prompt.size());
        }
    }
    DestroyMenu(menu);
    EXPECT_GT(commands, 15) << "the main menu was read";
}

} // namespace
