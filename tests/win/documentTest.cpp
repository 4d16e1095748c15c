// Documents as a user meets them: New, Open, Save and Save As round trips of exact bytes (non-ASCII names
// included), the "Save changes to ...?" prompt on every path that closes or replaces a modified document,
// a dropped file, and the title in the frame's caption.
#include "winTestApp.h"

#include "resourceIds.h"
#include "win/winRecentFiles.h"
#include "win/winText.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>

namespace
{

using wt::TestApp;
using wt::TestDocument;

const std::string binaryBytes("line1\r\nline2\nno-eol\x00\xff\xfe\x80 \xc3\xa9t\xc3\xa9", 30);

TestDocument* testDoc(TestApp& app)
{
    return static_cast<TestDocument*>(app.document());
}

std::wstring caption(TestApp& app)
{
    wchar_t text[512] = {};
    GetWindowTextW(app.mainFrame()->hwnd(), text, 512);
    return text;
}

TEST(DocumentTest, NewDocumentIsUntitledAndUnmodified)
{
    TestApp app(L"winTests-doc");
    auto* doc = static_cast<TestDocument*>(app.openDocumentFile(L""));
    ASSERT_NE(doc, nullptr);
    EXPECT_EQ(wt::narrow(doc->title()), "Untitled");
    EXPECT_TRUE(doc->pathName().empty());
    EXPECT_FALSE(doc->isModified());
    EXPECT_EQ(wt::narrow(caption(app)), "Untitled - winTests-doc");
    // an unmodified document is replaced without a prompt
    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, 57600, 0);
    EXPECT_TRUE(app.boxes.empty());
    EXPECT_EQ(testDoc(app)->newCalls, 2);
}

TEST(DocumentTest, OpenAndSaveRoundTripExactBytesUnderNonAsciiNames)
{
    const std::wstring names[] = {L"plain.txt", L"Gr\u00fc\u00dfe \u65e5\u672c\u8a9e \u00f1.txt",
                                  L"\u0411\u0443\u043a\u0432\u044b & %s %n.log"};
    std::wstring dir = wt::scratch("doc-roundtrip");
    for (const std::wstring& name : names) {
        wt::clearSettings(L"winTests-doc");
        TestApp app(L"winTests-doc");
        app.loadStdProfileSettings(4);
        std::wstring path = dir + L"\\" + name;
        wt::writeWide(path, binaryBytes);
        auto* doc = static_cast<TestDocument*>(app.openDocumentFile(path));
        ASSERT_NE(doc, nullptr) << wt::narrow(name);
        EXPECT_EQ(doc->bytes, binaryBytes) << wt::narrow(name);
        EXPECT_EQ(doc->pathName(), path);
        EXPECT_EQ(doc->title(), name);
        EXPECT_EQ(caption(app), name + L" - winTests-doc");
        EXPECT_EQ(app.recentFiles()->at(0), path) << "an opened file goes first in the recent files";

        doc->bytes = "changed \xe2\x82\xac\r\n";
        doc->setModified();
        SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, 57603, 0);
        EXPECT_EQ(wt::readWide(path), doc->bytes) << wt::narrow(name);
        EXPECT_FALSE(doc->isModified());
        EXPECT_TRUE(app.boxes.empty()) << wt::narrow(app.boxes[0].text);
    }
}

TEST(DocumentTest, SaveAsWritesTheNewNameAndTakesIt)
{
    wt::clearSettings(L"winTests-doc");
    TestApp app(L"winTests-doc");
    app.loadStdProfileSettings(4);
    std::wstring dir = wt::scratch("doc-saveas");
    auto* doc = static_cast<TestDocument*>(app.openDocumentFile(L""));
    ASSERT_NE(doc, nullptr);
    doc->bytes = "fresh";
    doc->setModified();
    std::wstring target = dir + L"\\\u00e9t\u00e9.txt";
    app.fileAnswers = {target};
    // Save on an untitled document asks for a name
    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, 57603, 0);
    ASSERT_EQ(app.fileDialogsOpened, std::vector<bool>{false});
    EXPECT_EQ(wt::readWide(target), "fresh");
    EXPECT_EQ(doc->pathName(), target);
    EXPECT_EQ(app.recentFiles()->at(0), target);

    // Save As to a second name leaves the first file as it was
    std::wstring second = dir + L"\\second.txt";
    doc->bytes = "second";
    app.fileAnswers = {second};
    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, 57604, 0);
    EXPECT_EQ(wt::readWide(second), "second");
    EXPECT_EQ(wt::readWide(target), "fresh");
    EXPECT_EQ(doc->pathName(), second);

    // a cancelled Save As writes nothing and keeps the document modified
    doc->bytes = "third";
    doc->setModified();
    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, 57604, 0);
    EXPECT_TRUE(doc->isModified());
    EXPECT_EQ(wt::readWide(second), "second");

    // Save on a read-only file asks for another name and leaves the read-only one as it was
    ASSERT_TRUE(SetFileAttributesW(second.c_str(), FILE_ATTRIBUTE_READONLY));
    std::wstring third = dir + L"\\third.txt";
    app.fileAnswers = {third};
    app.fileDialogsOpened.clear();
    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, 57603, 0);
    SetFileAttributesW(second.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(app.fileDialogsOpened, std::vector<bool>{false}) << "Save went to Save As";
    EXPECT_EQ(wt::readWide(third), "third");
    EXPECT_EQ(wt::readWide(second), "second");
    EXPECT_EQ(doc->pathName(), third);
    EXPECT_TRUE(app.boxes.empty()) << wt::narrow(app.boxes[0].text);
}

TEST(DocumentTest, AMissingFileFailsWithAMessageAndLeavesANewDocument)
{
    TestApp app(L"winTests-doc");
    std::wstring dir = wt::scratch("doc-missing");
    std::wstring present = dir + L"\\present.txt";
    wt::writeWide(present, "present");
    ASSERT_NE(app.openDocumentFile(present), nullptr);
    EXPECT_EQ(app.openDocumentFile(dir + L"\\absent.txt"), nullptr);
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_NE(app.boxes[0].text.find(L"absent.txt"), std::wstring::npos) << wt::narrow(app.boxes[0].text);
    EXPECT_EQ(app.boxes[0].type & MB_ICONMASK, UINT(MB_ICONERROR));
    EXPECT_TRUE(testDoc(app)->pathName().empty());
    EXPECT_EQ(wt::narrow(testDoc(app)->title()), "Untitled");
}

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
        SendMessageW(frame, WM_COMMAND, 57600, 0);
    } else if (action == "open") {
        app.fileAnswers.push_back(other);
        SendMessageW(frame, WM_COMMAND, 57601, 0);
    } else if (action == "recent") {
        app.addToRecentFileList(other);
        SendMessageW(frame, WM_COMMAND, 57616, 0);
    } else if (action == "close") {
        SendMessageW(frame, WM_CLOSE, 0, 0);
    } else if (action == "exit") {
        SendMessageW(frame, WM_COMMAND, 57665, 0);
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
    app.mainFrame()->acceptDroppedFiles();
    EXPECT_TRUE(GetWindowLongW(app.mainFrame()->hwnd(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
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

namespace
{

class PlainApp : public wt::TestApp
{
public:
    PlainApp() : TestApp(L"winTests-plain")
    {
        addDocTemplate(winDocTemplate::make<winDocument, winEditView, winFrame>(wt::frameResource));
    }
};

TEST(DocumentTest, TheDefaultDocumentShowsUtf8TextAndSavesItBack)
{
    PlainApp app;
    std::wstring dir = wt::scratch("doc-plain");
    std::wstring path = dir + L"\\text.txt";
    const std::string utf8 = "h\xc3\xa9llo\r\nw\xe2\x82\xacrld \xf0\x9f\x98\x80";
    wt::writeWide(path, utf8);
    winDocument* doc = app.openDocumentFile(path);
    ASSERT_NE(doc, nullptr);
    EXPECT_EQ(doc->view()->text(), L"h\u00e9llo\r\nw\u20acrld \U0001F600");
    EXPECT_FALSE(doc->isModified());
    SendMessageW(doc->view()->hwnd(), EM_SETSEL, 0, 0);
    SendMessageW(doc->view()->hwnd(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"\u00c4"));
    EXPECT_TRUE(doc->isModified());
    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, 57603, 0);
    EXPECT_EQ(wt::readWide(path), "\xc3\x84" + utf8);
    EXPECT_FALSE(doc->isModified());
}

TEST(DocumentTest, TheDefaultDocumentRefusesAFileWithNulBytes)
{
    PlainApp app;
    std::wstring dir = wt::scratch("doc-nul");
    std::wstring text = dir + L"\\text.txt", binary = dir + L"\\binary.bin";
    wt::writeWide(text, "text");
    wt::writeWide(binary, std::string("ab\0cd", 5));
    ASSERT_NE(app.openDocumentFile(text), nullptr);
    EXPECT_EQ(app.openDocumentFile(binary), nullptr);
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(app.boxes[0].text, winText::formatId(WIN_IDS_OPEN_FAILED, {binary}));
    EXPECT_EQ(app.document()->view()->text(), L"") << "the view is not left with a cut text";
    EXPECT_TRUE(app.document()->pathName().empty());
}

} // namespace
