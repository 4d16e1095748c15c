// Quillon's resources as Windows loads them from the program: menu 128, accelerator table 128, the About
// and Go To Line dialogs, icon 128 and the command prompts. What the user reaches must be exactly these
// ids, since the frame routes commands by id and the catalog translates the texts as stored.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "res/resource.h"
#include "resourceIds.h"

namespace
{

HINSTANCE self()
{
    return GetModuleHandleW(nullptr);
}

std::wstring loadString(UINT id)
{
    const wchar_t* text = nullptr;
    int len = LoadStringW(self(), id, reinterpret_cast<LPWSTR>(&text), 0);
    return len > 0 ? std::wstring(text, len) : std::wstring();
}

struct Item {
    std::wstring text; // empty for a separator
    UINT id;           // 0 for a separator or a popup
    bool grayed;
    std::vector<Item> children;
};

std::vector<Item> readMenu(HMENU menu)
{
    std::vector<Item> items;
    for (int i = 0, n = GetMenuItemCount(menu); i < n; ++i) {
        wchar_t buf[256] = {};
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_STRING | MIIM_ID | MIIM_FTYPE | MIIM_SUBMENU | MIIM_STATE;
        info.dwTypeData = buf;
        info.cch = 255;
        EXPECT_TRUE(GetMenuItemInfoW(menu, i, TRUE, &info)) << "item " << i;
        Item item{(info.fType & MFT_SEPARATOR) ? L"" : buf,
                  info.hSubMenu ? 0 : info.wID,
                  (info.fState & MFS_GRAYED) != 0,
                  {}};
        if (info.hSubMenu)
            item.children = readMenu(info.hSubMenu);
        items.push_back(item);
    }
    return items;
}

Item cmd(const wchar_t* text, UINT id, bool grayed = false)
{
    return {text, id, grayed, {}};
}

Item sep()
{
    return {L"", 0, false, {}};
}

std::string narrow(const std::wstring& w)
{
    std::string s;
    for (wchar_t c : w)
        s += c < 0x80 ? static_cast<char>(c) : '?';
    return s;
}

void expectSameMenu(const std::vector<Item>& expected, const std::vector<Item>& got, const std::string& where)
{
    ASSERT_EQ(expected.size(), got.size()) << where;
    for (size_t i = 0; i < expected.size(); ++i) {
        std::string at = where + "/" + (expected[i].text.empty() ? "separator" : narrow(expected[i].text));
        EXPECT_EQ(narrow(expected[i].text), narrow(got[i].text)) << at;
        EXPECT_EQ(expected[i].id, got[i].id) << at;
        if (!expected[i].text.empty()) { // Windows reports every separator as greyed
            EXPECT_EQ(expected[i].grayed, got[i].grayed) << at;
        }
        expectSameMenu(expected[i].children, got[i].children, at);
    }
}

TEST(Resources, MainMenuHasEveryCommandWithItsIdAndStoredText)
{
    const std::vector<Item> expected = {
        {L"&File",
         0,
         false,
         {cmd(L"&New\tCtrl+N", 57600), cmd(L"&Open...\tCtrl+O", 57601), cmd(L"&Save\tCtrl+S", 57603),
          cmd(L"Save &As...", 57604), sep(), cmd(L"&Print...\tCtrl+P", 57607), cmd(L"Print Pre&view", 57609),
          cmd(L"P&rint Setup...", 57606), sep(), cmd(L"Recent File", 57616, true), sep(), cmd(L"E&xit", 57665)}},
        {L"&Edit",
         0,
         false,
         {cmd(L"&Undo\tCtrl+Z", 57643), sep(), cmd(L"Cu&t\tCtrl+X", 57635), cmd(L"&Copy\tCtrl+C", 57634),
          cmd(L"&Paste\tCtrl+V", 57637), cmd(L"Select &All\tCtrl+A", 57642), sep(), cmd(L"&Find...\tCtrl+F", 57636),
          sep(), cmd(L"&Go To...\tCtrl+G", 253)}},
        {L"&View", 0, false, {cmd(L"&Toolbar", 59392), cmd(L"&Status Bar", 59393)}},
        {L"&Help",
         0,
         false,
         {cmd(L"&Help\tF1", 236), sep(), cmd(L"Check for Quillon Updates", 285), sep(),
          cmd(L"&About Quillon...", 57664)}},
    };
    HMENU menu = LoadMenuW(self(), MAKEINTRESOURCEW(IDR_MAINFRAME));
    ASSERT_NE(menu, nullptr);
    expectSameMenu(expected, readMenu(menu), "menu 128");
    DestroyMenu(menu);
}

TEST(Resources, EveryMenuCommandHasAPromptAndATooltip)
{
    HMENU menu = LoadMenuW(self(), MAKEINTRESOURCEW(IDR_MAINFRAME));
    ASSERT_NE(menu, nullptr);
    for (const Item& popup : readMenu(menu)) {
        for (const Item& item : popup.children) {
            if (item.id == 0)
                continue;
            std::wstring prompt = loadString(item.id);
            SCOPED_TRACE("command " + std::to_string(item.id) + " " + narrow(item.text));
            ASSERT_FALSE(prompt.empty());
            if (item.id == ID_FILE_MRU_FILE1) // the recent files have a prompt only, as the list shows names
                continue;
            size_t cut = prompt.find(L'\n');
            ASSERT_NE(cut, std::wstring::npos) << narrow(prompt);
            EXPECT_GT(cut, 0u);
            EXPECT_LT(cut + 1, prompt.size());
        }
    }
    DestroyMenu(menu);
    EXPECT_EQ(narrow(loadString(ID_INDICATOR_CAPS)), "CAP");
    EXPECT_EQ(narrow(loadString(ID_INDICATOR_NUM)), "NUM");
    EXPECT_EQ(narrow(loadString(ID_INDICATOR_SCRL)), "SCRL");
}

TEST(Resources, AcceleratorTableHoldsExactlyTheShortcuts)
{
    using Key = std::tuple<int, int, int>; // modifiers (FCONTROL/FSHIFT/FALT), virtual key, command
    const std::set<Key> expected = {
        {FCONTROL, 'N', 57600},   {FCONTROL, 'O', 57601},        {FCONTROL, 'S', 57603}, {FCONTROL, 'P', 57607},
        {FCONTROL, 'Z', 57643},   {FALT, VK_BACK, 57643},        {FCONTROL, 'X', 57635}, {FSHIFT, VK_DELETE, 57635},
        {FCONTROL, 'C', 57634},   {FCONTROL, VK_INSERT, 57634},  {FCONTROL, 'V', 57637}, {FSHIFT, VK_INSERT, 57637},
        {FCONTROL, 'A', 57642},   {FCONTROL, 'F', 57636},        {0, VK_F3, 57636},      {FCONTROL, 'G', 253},
        {0, VK_F6, ID_NEXT_PANE}, {FSHIFT, VK_F6, ID_PREV_PANE}, {0, VK_F1, 236},
    };
    HACCEL table = LoadAcceleratorsW(self(), MAKEINTRESOURCEW(IDR_MAINFRAME));
    ASSERT_NE(table, nullptr);
    int n = CopyAcceleratorTableW(table, nullptr, 0);
    std::vector<ACCEL> entries(n);
    CopyAcceleratorTableW(table, entries.data(), n);
    std::set<Key> got;
    for (const ACCEL& a : entries) {
        EXPECT_TRUE(a.fVirt & FVIRTKEY) << "key " << a.key << " is not a virtual key";
        got.insert({a.fVirt & (FCONTROL | FSHIFT | FALT), a.key, a.cmd});
    }
    EXPECT_EQ(expected, got);
    EXPECT_EQ(static_cast<size_t>(n), expected.size());
    DestroyAcceleratorTable(table);
}

// The font and size that a DLGTEMPLATEEX names, read from the resource itself.
struct TemplateFont {
    DWORD style = 0;
    int cx = 0, cy = 0;
    WORD points = 0;
    std::wstring face;
};

TemplateFont readTemplate(WORD id)
{
    TemplateFont t;
    HRSRC found = FindResourceW(self(), MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(5)); // RT_DIALOG
    if (!found)
        return t;
    auto* p = static_cast<const WORD*>(LockResource(LoadResource(self(), found)));
    DWORD size = SizeofResource(self(), found);
    if (!p || size < 26 || p[0] != 1 || p[1] != 0xFFFF)
        return t;
    t.style = p[6] | (DWORD(p[7]) << 16);
    t.cx = static_cast<short>(p[11]);
    t.cy = static_cast<short>(p[12]);
    const WORD* q = p + 13;
    const WORD* end = p + size / 2;
    for (int field = 0; field < 3 && q < end; ++field) { // menu, class, caption
        if (*q == 0xFFFF)
            q += 2;
        else
            while (q < end && *q++) {
            }
    }
    if (!(t.style & DS_SETFONT) || end - q < 3)
        return t;
    t.points = q[0];
    q += 3; // point size, weight, italic + charset
    while (q < end && *q)
        t.face += static_cast<wchar_t>(*q++);
    return t;
}

INT_PTR CALLBACK quietDialog(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

std::wstring windowText(HWND w)
{
    wchar_t buf[512] = {};
    GetWindowTextW(w, buf, 511);
    return buf;
}

struct Control {
    int id;
    const wchar_t* text;
};

struct DialogCase {
    WORD id;
    const wchar_t* caption;
    int cx, cy; // 0: not fixed
    std::vector<Control> controls;
};

TEST(Resources, DialogsCarryTheirControlsTextsAndShellFont)
{
    const std::vector<DialogCase> cases = {
        {IDD_ABOUTBOX,
         L"About Quillon",
         325,
         176,
         {{IDC_ABOUT_COPYRIGHT, L""},
          {IDC_ABOUT_BUILD_DATE, L""},
          {IDC_ABOUT_LANGUAGE, L""},
          {IDC_ABOUT_TRADEMARK, L""},
          {IDC_ABOUT_OTHER_TRADEMARKS,
           L"Other product and/or format names may be trademarks or registered trademarks of their respective owners."},
          {IDOK, L"OK"}}},
        {IDD_GOTO_LINE,
         L"Go To Line",
         0,
         0,
         {{IDC_GOTO_LINE_LABEL, L"Line Number (1-10):"},
          {IDC_GOTO_LINE_NUMBER, L""},
          {IDOK, L"OK"},
          {IDCANCEL, L"Cancel"}}},
    };
    for (const DialogCase& c : cases) {
        SCOPED_TRACE("dialog " + std::to_string(c.id));
        TemplateFont t = readTemplate(c.id);
        EXPECT_EQ(t.style & DS_SHELLFONT, static_cast<DWORD>(DS_SHELLFONT));
        EXPECT_EQ(t.points, 8);
        EXPECT_EQ(narrow(t.face), "MS Shell Dlg");
        if (c.cx) {
            EXPECT_EQ(t.cx, c.cx);
            EXPECT_EQ(t.cy, c.cy);
        }
        HWND dlg = CreateDialogParamW(self(), MAKEINTRESOURCEW(c.id), nullptr, quietDialog, 0);
        ASSERT_NE(dlg, nullptr) << "error " << GetLastError();
        EXPECT_EQ(narrow(windowText(dlg)), narrow(c.caption));
        for (const Control& ctl : c.controls) {
            HWND w = GetDlgItem(dlg, ctl.id);
            ASSERT_NE(w, nullptr) << "control " << ctl.id;
            EXPECT_EQ(narrow(windowText(w)), narrow(ctl.text)) << "control " << ctl.id;
        }
        if (c.id == IDD_ABOUTBOX) {
            LONG style = GetWindowLongW(GetDlgItem(dlg, IDC_ABOUT_COPYRIGHT), GWL_STYLE);
            EXPECT_TRUE(style & SS_NOPREFIX) << "the copyright text may hold an ampersand";
            EXPECT_TRUE(GetWindowLongW(GetDlgItem(dlg, IDOK), GWL_STYLE) & BS_DEFPUSHBUTTON);
        }
        DestroyWindow(dlg);
    }
}

TEST(Resources, IconHasEverySizeInTrueColourWithAlpha)
{
    HRSRC group = FindResourceW(self(), MAKEINTRESOURCEW(IDI_QUILLON), MAKEINTRESOURCEW(14)); // RT_GROUP_ICON
    ASSERT_NE(group, nullptr);
    auto* dir = static_cast<const BYTE*>(LockResource(LoadResource(self(), group)));
    ASSERT_NE(dir, nullptr);
    WORD count = dir[4] | (dir[5] << 8);
    std::set<int> sizes;
    for (WORD i = 0; i < count; ++i) {
        const BYTE* e = dir + 6 + 14 * i; // GRPICONDIRENTRY
        sizes.insert(e[0] ? e[0] : 256);
        EXPECT_EQ(e[6] | (e[7] << 8), 32) << "bits per pixel of image " << i;
    }
    EXPECT_EQ(sizes, (std::set<int>{16, 32, 48, 256}));

    for (int size : {16, 32, 48, 256}) {
        SCOPED_TRACE("size " + std::to_string(size));
        HICON icon = static_cast<HICON>(LoadImageW(self(), MAKEINTRESOURCEW(IDI_QUILLON), IMAGE_ICON, size, size, 0));
        ASSERT_NE(icon, nullptr);
        ICONINFO info{};
        ASSERT_TRUE(GetIconInfo(icon, &info));
        BITMAP bm{};
        GetObjectW(info.hbmColor, sizeof bm, &bm);
        EXPECT_EQ(bm.bmWidth, size);
        EXPECT_EQ(bm.bmHeight, size);
        DeleteObject(info.hbmColor);
        DeleteObject(info.hbmMask);
        DestroyIcon(icon);
    }
}

} // namespace
