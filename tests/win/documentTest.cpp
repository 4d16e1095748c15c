// The framework's document flows that Quillon's document inherits: the "Save changes to ...?" prompt on
// every path that closes or replaces a modified document (a failed save keeping it), and a dropped file.
// Opening, saving and Save As of Quillon's own document are checked in quillonDocumentTest.cpp.
#include "winTestApp.h"

#include "resourceIds.h"
#include "win/winText.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>

namespace
{

using wt::TestApp;
using wt::TestDocument;

// What each answer to the save prompt does, for each way of replacing or closing the document; with
// `diskFull` the save that Yes starts fails, and nothing may close or replace the edited document.
struct PromptCase {
    const char* action;
    int answer;
    bool expectSaved;
    bool expectReplaced;
    bool diskFull = false;
};

void runAction(TestApp& app, const std::string& action, const std::wstring& other)
{
    HWND frame = app.mainFrame()->hwnd();
    if (action == "new") {
        SendMessageW(frame, WM_COMMAND, ID_FILE_NEW, 0);
    } else if (action == "open") {
        app.fileAnswers.push_back(other);
        SendMessageW(frame, WM_COMMAND, ID_FILE_OPEN, 0);
    } else if (action == "recent") {
        app.addToRecentFileList(other);
        SendMessageW(frame, WM_COMMAND, ID_FILE_MRU_FILE1, 0);
    } else if (action == "close") {
        SendMessageW(frame, WM_CLOSE, 0, 0);
    } else if (action == "exit") {
        SendMessageW(frame, WM_COMMAND, ID_APP_EXIT, 0);
    }
}

TEST(DocumentTest, SavePromptAnswersOnNewOpenRecentAndClose)
{
    const PromptCase cases[] = {
        {"new", IDYES, true, true},           {"new", IDNO, false, true},          {"new", IDCANCEL, false, false},
        {"open", IDYES, true, true},          {"open", IDNO, false, true},         {"open", IDCANCEL, false, false},
        {"recent", IDYES, true, true},        {"recent", IDNO, false, true},       {"recent", IDCANCEL, false, false},
        {"close", IDYES, true, true},         {"close", IDNO, false, true},        {"close", IDCANCEL, false, false},
        {"exit", IDYES, true, true},          {"exit", IDNO, false, true},         {"exit", IDCANCEL, false, false},
        {"close", IDYES, false, false, true}, {"exit", IDYES, false, false, true}, {"open", IDYES, false, false, true},
    };
    std::wstring dir = wt::scratch("doc-prompt");
    for (const PromptCase& c : cases) {
        std::string label =
            std::string(c.action) + " answer " + std::to_string(c.answer) + (c.diskFull ? ", disk full" : "");
        wt::clearSettings(L"winTests-prompt");
        TestApp app(L"winTests-prompt");
        app.loadStdProfileSettings(4);
        std::wstring path = dir + L"\\mine.txt", other = dir + L"\\other.txt";
        wt::writeWide(path, "original");
        wt::writeWide(other, "other");
        auto* doc = static_cast<TestDocument*>(app.openDocumentFile(path));
        ASSERT_NE(doc, nullptr);
        doc->bytes = "edited";
        doc->setModified();
        app.answers = {c.answer};
        if (c.diskFull)
            winSafeSave::setTestHook([](winSafeSave::Point, const std::wstring&) -> DWORD { return ERROR_DISK_FULL; });
        runAction(app, c.action, other);
        winSafeSave::setTestHook(nullptr);

        ASSERT_EQ(app.boxes.size(), c.diskFull ? 2u : 1u) << label;
        if (c.diskFull) {
            EXPECT_EQ(app.boxes[1].text, winText::formatId(WIN_IDS_SAVE_DISK_FULL, {path})) << label;
            EXPECT_EQ(doc->bytes, "edited") << label << ": the edits are still there";
            EXPECT_TRUE(doc->isModified()) << label;
        }
        EXPECT_EQ(app.boxes[0].text, winText::formatId(WIN_IDS_SAVE_CHANGES, {path})) << label;
        EXPECT_EQ(app.boxes[0].type & MB_TYPEMASK, UINT(MB_YESNOCANCEL)) << label;
        EXPECT_EQ(wt::readWide(path), c.expectSaved ? "edited" : "original") << label;
        if (std::string(c.action) == "close" || std::string(c.action) == "exit") {
            EXPECT_EQ(IsWindow(app.mainFrame()->hwnd()) != FALSE, !c.expectReplaced) << label;
        } else {
            EXPECT_EQ(doc->pathName() != path, c.expectReplaced) << label;
            EXPECT_EQ(doc->isModified(), !c.expectReplaced) << label;
            if (c.expectReplaced && std::string(c.action) != "new") {
                EXPECT_EQ(doc->pathName(), other) << label;
                EXPECT_EQ(doc->bytes, "other") << label;
                if (std::string(c.action) == "open") {
                    EXPECT_EQ(app.fileDialogsOpened, std::vector<bool>{true}) << label << ": Open asks for a file";
                }
            }
        }
    }
    MSG msg;
    while (PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
}

HGLOBAL makeDrop(const std::vector<std::wstring>& files)
{
    size_t chars = 1;
    for (const auto& f : files)
        chars += f.size() + 1;
    HGLOBAL h = GlobalAlloc(GHND, sizeof(DROPFILES) + chars * sizeof(wchar_t));
    auto* drop = static_cast<DROPFILES*>(GlobalLock(h));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    auto* out = reinterpret_cast<wchar_t*>(drop + 1);
    for (const auto& f : files) {
        std::memcpy(out, f.c_str(), (f.size() + 1) * sizeof(wchar_t));
        out += f.size() + 1;
    }
    GlobalUnlock(h);
    return h;
}

TEST(DocumentTest, ADroppedFileOpensTheFirstFileAfterTheSavePrompt)
{
    TestApp app(L"winTests-doc");
    std::wstring dir = wt::scratch("doc-drop");
    std::wstring first = dir + L"\\d\u00e9pos\u00e9.txt", second = dir + L"\\second.txt";
    wt::writeWide(first, "dropped bytes");
    wt::writeWide(second, "not this one");
    auto* doc = static_cast<TestDocument*>(app.openDocumentFile(L""));
    ASSERT_NE(doc, nullptr);
    doc->setModified();

    app.answers = {IDCANCEL};
    SendMessageW(app.mainFrame()->hwnd(), WM_DROPFILES, reinterpret_cast<WPARAM>(makeDrop({first, second})), 0);
    EXPECT_EQ(app.boxes.size(), 1u);
    EXPECT_TRUE(doc->pathName().empty()) << "Cancel keeps the document";

    app.answers = {IDNO};
    SendMessageW(app.mainFrame()->hwnd(), WM_DROPFILES, reinterpret_cast<WPARAM>(makeDrop({first, second})), 0);
    EXPECT_EQ(doc->bytes, "dropped bytes");
    EXPECT_EQ(doc->pathName(), first);
}

} // namespace
