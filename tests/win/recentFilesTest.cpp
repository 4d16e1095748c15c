// The recent-file list: newest first, no duplicates, at most four, kept in the registry as File1..File4,
// shown in the File menu in place of its placeholder; a vanished file is removed with a message.
#include "winTestApp.h"

#include "resourceIds.h"
#include "win/winRecentFiles.h"
#include "win/winText.h"

#include <gtest/gtest.h>

namespace
{

const wchar_t appKey[] = L"Software\\QuillonTests\\winTests-recent";

std::vector<std::wstring> entries(const winRecentFiles& list)
{
    std::vector<std::wstring> out;
    for (size_t i = 0; i < list.size(); ++i)
        out.push_back(list.at(i));
    return out;
}

std::wstring registryValue(const wchar_t* name)
{
    wchar_t buffer[1024] = {};
    DWORD bytes = sizeof buffer;
    if (RegGetValueW(HKEY_CURRENT_USER, (std::wstring(appKey) + L"\\Recent File List").c_str(), name, RRF_RT_REG_SZ,
                     nullptr, buffer, &bytes) != ERROR_SUCCESS)
        return L"<none>";
    return buffer;
}

TEST(RecentFilesTest, OrderLimitAndDuplicates)
{
    struct Case {
        std::vector<std::wstring> added;
        std::vector<std::wstring> expected;
    };
    const Case cases[] = {
        {{L"C:\\a"}, {L"C:\\a"}},
        {{L"C:\\a", L"C:\\b"}, {L"C:\\b", L"C:\\a"}},
        {{L"C:\\a", L"C:\\b", L"C:\\c", L"C:\\d", L"C:\\e"}, {L"C:\\e", L"C:\\d", L"C:\\c", L"C:\\b"}},
        {{L"C:\\a", L"C:\\b", L"C:\\a"}, {L"C:\\a", L"C:\\b"}},
        {{L"C:\\Dir\\A.txt", L"C:\\b", L"c:\\dir\\a.TXT"}, {L"c:\\dir\\a.TXT", L"C:\\b"}},
        {{L""}, {}},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        winRecentFiles list(appKey, 4);
        for (const auto& p : cases[i].added)
            list.add(p);
        EXPECT_EQ(entries(list), cases[i].expected) << "case " << i;
    }
}

TEST(RecentFilesTest, RegistryRoundTripRemovesStaleValues)
{
    wt::clearSettings(L"winTests-recent");
    {
        winRecentFiles list(appKey, 4);
        for (const wchar_t* p : {L"C:\\one", L"C:\\two \u00e9", L"C:\\three", L"C:\\four", L"C:\\five"})
            list.add(p);
        ASSERT_TRUE(list.save());
    }
    EXPECT_EQ(registryValue(L"File1"), L"C:\\five");
    EXPECT_EQ(registryValue(L"File2"), L"C:\\four");
    EXPECT_EQ(registryValue(L"File4"), L"C:\\two \u00e9");
    EXPECT_EQ(registryValue(L"File5"), L"<none>");

    winRecentFiles reread(appKey, 4);
    reread.load();
    EXPECT_EQ(entries(reread), (std::vector<std::wstring>{L"C:\\five", L"C:\\four", L"C:\\three", L"C:\\two \u00e9"}));
    reread.remove(0);
    reread.remove(7);
    ASSERT_TRUE(reread.save());
    EXPECT_EQ(registryValue(L"File1"), L"C:\\four");
    EXPECT_EQ(registryValue(L"File4"), L"<none>") << "a value past the end stays behind";
}

TEST(RecentFilesTest, MenuShowsEntriesInPlaceOfThePlaceholderAndBack)
{
    wt::clearSettings(L"winTests-recent");
    wt::TestApp app(L"winTests-recent");
    app.loadStdProfileSettings(4);
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    HWND frame = app.mainFrame()->hwnd();
    HMENU file = GetSubMenu(GetMenu(frame), 0);
    auto itemText = [&](unsigned id) {
        wchar_t text[256] = {};
        GetMenuStringW(file, id, text, 256, MF_BYCOMMAND);
        return std::wstring(text);
    };
    SendMessageW(frame, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(file), 0);
    EXPECT_EQ(itemText(ID_FILE_MRU_FILE1), L"Recent File");
    EXPECT_TRUE(GetMenuState(file, ID_FILE_MRU_FILE1, MF_BYCOMMAND) & MF_GRAYED);

    app.addToRecentFileList(L"C:\\docs\\first.txt");
    app.addToRecentFileList(L"C:\\docs\\R&D.txt");
    SendMessageW(frame, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(file), 0);
    EXPECT_EQ(itemText(ID_FILE_MRU_FILE1), L"&1 C:\\docs\\R&&D.txt");
    EXPECT_EQ(itemText(ID_FILE_MRU_FILE2), L"&2 C:\\docs\\first.txt");
    EXPECT_FALSE(GetMenuState(file, ID_FILE_MRU_FILE1, MF_BYCOMMAND) & MF_GRAYED);
    EXPECT_EQ(GetMenuItemID(file, 9), 57616u) << "entries stand where the placeholder stood";
    EXPECT_EQ(GetMenuItemID(file, 10), 57617u);
    EXPECT_EQ(GetMenuItemID(file, 11), 0u) << "the separator after the list stays";

    app.recentFiles()->remove(1);
    app.recentFiles()->remove(0);
    SendMessageW(frame, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(file), 0);
    EXPECT_EQ(itemText(ID_FILE_MRU_FILE1), L"Recent File");
    EXPECT_TRUE(GetMenuState(file, ID_FILE_MRU_FILE1, MF_BYCOMMAND) & MF_GRAYED);
    EXPECT_EQ(GetMenuItemCount(file), 12);
}

TEST(RecentFilesTest, AVanishedFileIsRemovedWithAMessage)
{
    wt::clearSettings(L"winTests-recent");
    wt::TestApp app(L"winTests-recent");
    app.loadStdProfileSettings(4);
    std::wstring dir = wt::scratch("recent-vanished");
    std::wstring kept = dir + L"\\kept.txt", gone = dir + L"\\gone.txt";
    wt::writeWide(kept, "kept");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    app.addToRecentFileList(kept);
    app.addToRecentFileList(gone);
    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, ID_FILE_MRU_FILE1, 0);
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(app.boxes[0].text, winText::formatId(WIN_IDS_RECENT_MISSING, {gone}));
    EXPECT_EQ(entries(*app.recentFiles()), std::vector<std::wstring>{kept});
    EXPECT_EQ(registryValue(L"File1"), kept);
    EXPECT_EQ(registryValue(L"File2"), L"<none>");
    EXPECT_TRUE(app.document()->pathName().empty()) << "nothing was opened";

    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, ID_FILE_MRU_FILE1, 0);
    EXPECT_EQ(app.document()->pathName(), kept);
}

} // namespace
