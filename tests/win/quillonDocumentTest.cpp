// Quillon's document and view as a user meets them: files opened into the view (line ends, UTF-8),
// saved back as UTF-8 with CR-LF through the real commands, the question before a save over a file that
// is not shown as it is, files that cannot be shown, the title, Save As (in the document's own encoding),
// the font and the wrapping view.
#include "quillonTestApp.h"

#include "app/qwzAppCatalog.h"
#include "app/qwzCText.h"
#include "platform/platform.h"
#include "resourceIds.h"
#include "win/winRecentFiles.h"
#include "win/winText.h"

#include <gtest/gtest.h>

namespace
{

using qw::QuillonTestApp;
const unsigned save = ID_FILE_SAVE, saveAs = ID_FILE_SAVE_AS;

std::wstring caption(QuillonTestApp& app)
{
    return qw::textOf(app.mainFrame()->hwnd());
}

struct RoundTrip {
    const char* what;
    std::wstring name;
    std::string file;
    std::wstring shown;
    std::string saved;
};

TEST(QuillonDocument, OpenShowsTheTextAndSaveWritesUtf8WithCrLf)
{
    const RoundTrip cases[] = {
        {"LF becomes CR-LF", L"lf.txt", "a\nb", L"a\r\nb", "a\r\nb"},
        {"lone CR stays", L"cr.txt", "a\rb\n", L"a\rb\r\n", "a\rb\r\n"},
        {"empty file", L"empty.txt", "", L"", ""},
        {"UTF-8 text", L"Gr\u00fc\u00dfe \u65e5\u672c.txt",
         "Gr\xC3\xB6\xC3\x9F"
         "e\n\xE6\x97\xA5\xF0\x9F\x98\x80",
         L"Gr\u00f6\u00dfe\r\n\u65e5\U0001F600",
         "Gr\xC3\xB6\xC3\x9F"
         "e\r\n\xE6\x97\xA5\xF0\x9F\x98\x80"},
        {"no byte-order mark is added", L"\u0411 %s %n.log", "x", L"x", "x"},
    };
    for (const auto& c : cases) {
        wt::clearSettings(L"quillonTests-doc");
        QuillonTestApp app(L"quillonTests-doc");
        app.loadStdProfileSettings(4);
        std::wstring path = qw::scratchFile("qdoc-roundtrip", c.name, c.file);
        ASSERT_NE(app.openDocumentFile(path), nullptr) << c.what;
        EXPECT_EQ(app.view()->text(), c.shown) << c.what;
        EXPECT_FALSE(app.doc()->isModified()) << c.what;
        EXPECT_EQ(caption(app), path + L" - Quillon 4.3.4002") << c.what << ": the title is the path as given";
        EXPECT_EQ(app.recentFiles()->at(0), path) << c.what << ": an opened file goes first in the recent files";
        app.doc()->setModified();
        SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, save, 0);
        EXPECT_EQ(wt::readWide(path), c.saved) << c.what;
        EXPECT_FALSE(app.doc()->isModified()) << c.what;
        EXPECT_TRUE(app.boxes.empty()) << c.what << ": " << wt::narrow(app.boxes.front().text);
    }
}

// A file whose text is shown otherwise than it is on disk: the first save over it asks, through the real
// commands, and only Yes writes over it.
struct AlteredCase {
    const char* what;
    std::string file;
    std::string saved;               // what saving the shown text writes
    bool percent, notUtf8;           // the reasons the question gives
    unsigned command;                // the frame command or WM_CLOSE
    std::vector<int> answers;        // message boxes, in order
    std::vector<std::wstring> names; // Save As answers: L"*" is the file itself, L"+" another name
    bool written, otherWritten, stillOpen;
    bool notUtf16 = false;
};

TEST(QuillonDocument, ASaveOverAFileShownOtherwiseAsksFirst)
{
    const std::string batch = "for %%i in (*) do echo %%i\r\n";
    const std::string shown = "for %i in (*) do echo %i\r\n";
    const AlteredCase cases[] = {
        {"Yes writes", batch, shown, true, false, save, {IDYES}, {}, true, false, true},
        {"Cancel writes nothing", batch, shown, true, false, save, {IDCANCEL}, {}, false, false, true},
        {"No offers Save As", batch, shown, true, false, save, {IDNO}, {L"+"}, false, true, true},
        {"No, then Save As cancelled", batch, shown, true, false, save, {IDNO}, {L""}, false, false, true},
        {"Save As onto the file asks too", batch, shown, true, false, saveAs, {IDYES}, {L"*"}, true, false, true},
        {"not UTF-8", "a\xC3(\x80\n", "a?(\xC2\x80\r\n", false, true, save, {IDYES}, {}, true, false, true},
        {"both", "%%\xFF", "%?", true, true, save, {IDYES}, {}, true, false, true},
        {"UTF-16 with a lone surrogate and an odd last byte",
         std::string("\xFF\xFE%\0%\0\x3D\xD8!\0?", 11),
         std::string("\xFF\xFE%\0\xFD\xFF!\0\xFD\xFF", 10),
         true,
         false,
         save,
         {IDYES},
         {},
         true,
         false,
         true,
         true},
        {"close: save, Cancel", batch, shown, true, false, WM_CLOSE, {IDYES, IDCANCEL}, {}, false, false, true},
        {"close: save, Yes", batch, shown, true, false, WM_CLOSE, {IDYES, IDYES}, {}, true, false, false},
    };
    for (const AlteredCase& c : cases) {
        wt::clearSettings(L"quillonTests-altered");
        QuillonTestApp app(L"quillonTests-altered");
        std::wstring path = qw::scratchFile("qdoc-altered", L"run %%i.bat", c.file);
        std::wstring other = wt::scratch("qdoc-altered-other") + L"\\copy.bat";
        ASSERT_NE(app.openDocumentFile(path), nullptr) << c.what;
        app.doc()->setModified();
        app.answers.assign(c.answers.begin(), c.answers.end());
        for (const std::wstring& name : c.names)
            app.fileAnswers.push_back(name == L"*" ? path : name == L"+" ? other : name);
        HWND frame = app.mainFrame()->hwnd();
        if (c.command == WM_CLOSE)
            SendMessageW(frame, WM_CLOSE, 0, 0);
        else
            SendMessageW(frame, WM_COMMAND, c.command, 0);

        std::wstring question = qwzMessage(IDS_SAVE_ALTERS_FILE, wt::narrow(path).c_str()) +
                                (c.percent ? qwzMessage(IDS_SAVE_ALTERS_PERCENT) : L"") +
                                (c.notUtf8 ? qwzMessage(IDS_SAVE_ALTERS_UTF8) : L"") +
                                (c.notUtf16 ? qwzMessage(IDS_SAVE_ALTERS_UTF16) : L"") +
                                qwzMessage(IDS_SAVE_ALTERS_QUESTION);
        ASSERT_EQ(app.boxes.size(), c.answers.size()) << c.what;
        const auto& asked = app.boxes.back();
        EXPECT_EQ(asked.text, question) << c.what;
        EXPECT_EQ(asked.type & (MB_TYPEMASK | MB_ICONMASK | MB_DEFMASK),
                  UINT(MB_YESNOCANCEL | MB_ICONWARNING | MB_DEFBUTTON2))
            << c.what << ": No is the default";
        EXPECT_EQ(wt::readWide(path), c.written ? c.saved : c.file) << c.what;
        EXPECT_EQ(wt::readWide(other), c.otherWritten ? c.saved : "<missing>") << c.what;
        EXPECT_EQ(IsWindow(frame) != FALSE, c.stillOpen) << c.what;
        if (!c.stillOpen)
            continue;
        EXPECT_EQ(app.doc()->isModified(), !c.written && !c.otherWritten) << c.what;
        // the question comes once: after the text was written over the file, a save just writes
        if (c.written) {
            app.doc()->setModified();
            SendMessageW(frame, WM_COMMAND, save, 0);
            EXPECT_EQ(app.boxes.size(), c.answers.size()) << c.what << ": asked again";
            EXPECT_FALSE(app.doc()->isModified()) << c.what;
        }
        DeleteFileW(other.c_str());
    }
    MSG msg;
    while (PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
}

struct Refused {
    const char* what;
    std::string bytes; // the file's; none is written for a missing file
    size_t limit;
    unsigned message;
};

// A file that cannot be shown replaces the one shown before with an empty, untitled view and a message.
TEST(QuillonDocument, FilesThatCannotBeShownAreRefusedWithAMessage)
{
    const Refused cases[] = {
        {"missing", "", 0, IDS_FILE_NOT_FOUND},
        {"NUL byte", std::string("text\0more", 9), 0, IDS_FILE_HAS_NUL},
        {"NUL byte past the first 64 KiB", std::string(70000, 'a') + std::string(1, '\0'), 0, IDS_FILE_HAS_NUL},
        {"NUL unit in UTF-16 past the first 64 KiB", "\xFF\xFE" + std::string(70000, 'a') + std::string(2, '\0') + "b",
         0, IDS_FILE_HAS_NUL},
        {"UTF-32 taken for UTF-16 with NUL units", std::string("\xFF\xFE\0\0a\0\0\0", 8), 0, IDS_FILE_HAS_NUL},
        {"an executable's header", std::string("MZ\x90\0\x03\0\0\0", 8), 0, IDS_FILE_HAS_NUL},
        {"over the control's limit", "0123456789\n0123456789", 16, IDS_FILE_TOO_LARGE},
    };
    for (const auto& c : cases) {
        QuillonTestApp app(L"quillonTests-doc");
        ASSERT_NE(app.openDocumentFile(qw::scratchFile("qdoc-refused", L"present.txt", "old text")), nullptr);
        if (c.limit)
            SendMessageW(app.view()->hwnd(), EM_SETLIMITTEXT, c.limit, 0);
        std::wstring path = wt::scratch("qdoc-refused2") + L"\\r.txt";
        if (c.message != IDS_FILE_NOT_FOUND)
            wt::writeWide(path, c.bytes);
        EXPECT_NE(app.openDocumentFile(path), nullptr) << c.what << ": the framework sees success";
        ASSERT_EQ(app.boxes.size(), 1u) << c.what;
        std::wstring expected = winText::fromUtf8(
            translateFormat(platform::loadString(c.message).c_str(), winText::toUtf8(path).c_str()).str());
        EXPECT_EQ(app.boxes[0].text, expected) << c.what;
        EXPECT_TRUE(app.boxes[0].type & MB_ICONERROR) << c.what;
        EXPECT_EQ(app.view()->text(), L"") << c.what;
        EXPECT_TRUE(app.doc()->pathName().empty()) << c.what;
        EXPECT_EQ(wt::narrow(caption(app)), "Untitled - Quillon 4.3.4002") << c.what;
        EXPECT_EQ(wt::readWide(path), c.message == IDS_FILE_NOT_FOUND ? "<missing>" : c.bytes)
            << c.what << ": the file is untouched";
    }
}

// New empties the view without asking while nothing was changed; Save on an untitled document and Save As
// ask for a name, Save As leaves the earlier file as it was, a cancelled one writes nothing, and Save on
// a read-only file goes to Save As.
TEST(QuillonDocument, NewSaveAndSaveAsChooseTheirTarget)
{
    wt::clearSettings(L"quillonTests-doc");
    QuillonTestApp app(L"quillonTests-doc");
    app.loadStdProfileSettings(4);
    std::wstring dir = wt::scratch("qdoc-saveas");
    ASSERT_NE(app.openDocumentFile(qw::scratchFile("qdoc-new", L"n.txt", "something")), nullptr);
    HWND frame = app.mainFrame()->hwnd();
    SendMessageW(frame, WM_COMMAND, ID_FILE_NEW, 0);
    EXPECT_EQ(app.view()->text(), L"");
    EXPECT_EQ(wt::narrow(app.doc()->title()), "Untitled");
    EXPECT_TRUE(app.boxes.empty()) << "an unchanged document is replaced without a question";

    SendMessageW(app.view()->hwnd(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"typed \u00e9\r\nline"));
    EXPECT_TRUE(app.doc()->isModified());
    std::wstring first = dir + L"\\\u65b0.txt", second = dir + L"\\second.txt", third = dir + L"\\third.txt";
    app.fileAnswers = {first};
    SendMessageW(frame, WM_COMMAND, save, 0);
    EXPECT_EQ(wt::readWide(first), "typed \xC3\xA9\r\nline");
    EXPECT_EQ(app.doc()->title(), first);
    EXPECT_EQ(app.recentFiles()->at(0), first) << "a file saved under a new name goes first in the recent files";
    EXPECT_FALSE(app.doc()->isModified());

    app.view()->setText(L"second");
    app.fileAnswers = {second};
    SendMessageW(frame, WM_COMMAND, saveAs, 0);
    EXPECT_EQ(wt::readWide(second), "second");
    EXPECT_EQ(wt::readWide(first), "typed \xC3\xA9\r\nline");
    EXPECT_EQ(app.doc()->pathName(), second);

    app.view()->setText(L"third");
    app.doc()->setModified();
    SendMessageW(frame, WM_COMMAND, saveAs, 0); // no answer: the dialog is cancelled
    EXPECT_TRUE(app.doc()->isModified());
    EXPECT_EQ(wt::readWide(second), "second");

    ASSERT_TRUE(SetFileAttributesW(second.c_str(), FILE_ATTRIBUTE_READONLY));
    app.fileAnswers = {third};
    app.fileDialogsOpened.clear();
    SendMessageW(frame, WM_COMMAND, save, 0);
    SetFileAttributesW(second.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(app.fileDialogsOpened, std::vector<bool>{false}) << "Save went to Save As";
    EXPECT_EQ(wt::readWide(third), "third");
    EXPECT_EQ(wt::readWide(second), "second");
    EXPECT_EQ(app.doc()->pathName(), third);
    EXPECT_TRUE(app.boxes.empty()) << wt::narrow(app.boxes[0].text);
}

// Save As writes the document's own encoding under the new name; a new document, or an empty one left by a
// file that could not be shown, is UTF-8 with no mark again.
TEST(QuillonDocument, SaveAsKeepsTheEncodingAndANewDocumentIsUtf8)
{
    wt::clearSettings(L"quillonTests-doc");
    QuillonTestApp app(L"quillonTests-doc");
    std::wstring dir = wt::scratch("qdoc-encoding");
    const std::string bigEndian("\xFE\xFF\0h\0i", 6);
    ASSERT_NE(app.openDocumentFile(qw::scratchFile("qdoc-encoding-be", L"be.txt", bigEndian)), nullptr);
    EXPECT_EQ(app.view()->text(), L"hi");
    HWND frame = app.mainFrame()->hwnd();
    app.fileAnswers = {dir + L"\\copy.txt"};
    SendMessageW(frame, WM_COMMAND, saveAs, 0);
    EXPECT_EQ(wt::readWide(dir + L"\\copy.txt"), bigEndian);

    SendMessageW(frame, WM_COMMAND, ID_FILE_NEW, 0);
    app.view()->setText(L"new \u00e9");
    app.doc()->setModified();
    app.fileAnswers = {dir + L"\\new.txt"};
    SendMessageW(frame, WM_COMMAND, save, 0);
    EXPECT_EQ(wt::readWide(dir + L"\\new.txt"), "new \xC3\xA9");
    EXPECT_TRUE(app.boxes.empty()) << wt::narrow(app.boxes.front().text);

    ASSERT_NE(app.openDocumentFile(qw::scratchFile("qdoc-encoding-be", L"be.txt", bigEndian)), nullptr);
    ASSERT_NE(app.openDocumentFile(qw::scratchFile("qdoc-encoding-nul", L"nul.txt", std::string("\xFF\xFE\0\0", 4))),
              nullptr);
    EXPECT_EQ(app.boxes.size(), 1u) << "the file with a NUL unit is refused";
    app.view()->setText(L"left");
    app.doc()->setModified();
    app.fileAnswers = {dir + L"\\left.txt"};
    SendMessageW(frame, WM_COMMAND, save, 0);
    EXPECT_EQ(wt::readWide(dir + L"\\left.txt"), "left");
}

TEST(QuillonView, TheFontIsCourierNewOfTenPoints)
{
    QuillonTestApp app(L"quillonTests-view");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    HFONT font = reinterpret_cast<HFONT>(SendMessageW(app.view()->hwnd(), WM_GETFONT, 0, 0));
    LOGFONTW description = {};
    ASSERT_EQ(GetObjectW(font, sizeof description, &description), static_cast<int>(sizeof description));
    EXPECT_EQ(wt::narrow(description.lfFaceName), "Courier New");
    HDC screen = GetDC(nullptr);
    EXPECT_EQ(description.lfHeight, -MulDiv(100, GetDeviceCaps(screen, LOGPIXELSY), 720));
    ReleaseDC(nullptr, screen);
}

TEST(QuillonView, AFileOpenedBeforeTheFirstShowIsWrappedAtTheWindowsWidth)
{
    QuillonTestApp app(L"quillonTests-view");
    std::wstring path = qw::scratchFile("qview-hidden", L"w.txt", std::string(3000, 'h'));
    ASSERT_NE(app.openDocumentFile(path), nullptr);
    ASSERT_FALSE(IsWindowVisible(app.mainFrame()->hwnd())) << "the frame is still hidden";
    RECT client = {};
    GetClientRect(app.view()->hwnd(), &client);
    EXPECT_GT(client.right, 100) << "the view has its width before the window shows";
    LRESULT lines = SendMessageW(app.view()->hwnd(), EM_GETLINECOUNT, 0, 0);
    EXPECT_GT(lines, 1);
    EXPECT_LT(lines, 1000) << "not one character per line";
}

} // namespace
