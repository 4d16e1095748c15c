// Quillon's document and view as a user meets them: files opened into the view (line ends, UTF-8,
// per cent signs shown safely), saved back as UTF-8 with CR-LF, the question before a save over a file
// that is not shown as it is, files that cannot be shown, the title, the font and the wrapping view.
#include "quillonTestApp.h"

#include "app/qwzAppCatalog.h"
#include "app/qwzCText.h"
#include "platform/platform.h"
#include "resourceIds.h"
#include "win/winText.h"

#include <gtest/gtest.h>

namespace
{

using qw::QuillonTestApp;

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
        {"CR-LF stays", L"crlf.txt", "a\r\nb\r\n", L"a\r\nb\r\n", "a\r\nb\r\n"},
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
        std::wstring path = qw::scratchFile("qdoc-roundtrip", c.name, c.file);
        ASSERT_NE(app.openDocumentFile(path), nullptr) << c.what;
        EXPECT_EQ(app.view()->text(), c.shown) << c.what;
        EXPECT_FALSE(app.doc()->isModified()) << c.what;
        EXPECT_TRUE(app.boxes.empty()) << c.what << ": " << wt::narrow(app.boxes.front().text);
        EXPECT_EQ(app.doc()->title(), path) << c.what << ": the title is the path as given";
        ASSERT_TRUE(app.doc()->doFileSave()) << c.what;
        EXPECT_EQ(wt::readWide(path), c.saved) << c.what;
    }
}

TEST(QuillonDocument, PercentSignsInAFileShowWithoutFormatting)
{
    QuillonTestApp app(L"quillonTests-doc");
    std::wstring path = qw::scratchFile("qdoc-percent", L"p.txt", "100%% sure %n%n%n %s %d %x %p %*.*f %%%");
    ASSERT_NE(app.openDocumentFile(path), nullptr);
    EXPECT_EQ(app.view()->text(), L"100% sure %n%n%n %s %d %x %p %*.*f %%");
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
};

TEST(QuillonDocument, ASaveOverAFileShownOtherwiseAsksFirst)
{
    const std::string batch = "for %%i in (*) do echo %%i\r\n";
    const std::string shown = "for %i in (*) do echo %i\r\n";
    const unsigned save = 57603, saveAs = 57604;
    const AlteredCase cases[] = {
        {"Yes writes", batch, shown, true, false, save, {IDYES}, {}, true, false, true},
        {"Cancel writes nothing", batch, shown, true, false, save, {IDCANCEL}, {}, false, false, true},
        {"No offers Save As", batch, shown, true, false, save, {IDNO}, {L"+"}, false, true, true},
        {"No, then Save As cancelled", batch, shown, true, false, save, {IDNO}, {L""}, false, false, true},
        {"Save As onto the file asks too", batch, shown, true, false, saveAs, {IDYES}, {L"*"}, true, false, true},
        {"not UTF-8", "a\xC3(\x80\n", "a?(\xC2\x80\r\n", false, true, save, {IDYES}, {}, true, false, true},
        {"both", "%%\xFF", "%?", true, true, save, {IDYES}, {}, true, false, true},
        {"closing: Yes to save, then Cancel",
         batch,
         shown,
         true,
         false,
         WM_CLOSE,
         {IDYES, IDCANCEL},
         {},
         false,
         false,
         true},
        {"closing: Yes to save, then Yes", batch, shown, true, false, WM_CLOSE, {IDYES, IDYES}, {}, true, false, false},
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
    std::string bytes;
    size_t limit;
    unsigned message;
};

TEST(QuillonDocument, FilesThatCannotBeShownAreRefusedWithAMessage)
{
    const Refused cases[] = {
        {"NUL byte", std::string("text\0more", 9), 0, IDS_FILE_HAS_NUL},
        {"over the control's limit", "0123456789\n0123456789", 16, IDS_FILE_TOO_LARGE},
    };
    for (const auto& c : cases) {
        QuillonTestApp app(L"quillonTests-doc");
        ASSERT_NE(app.openDocumentFile(L""), nullptr);
        if (c.limit)
            SendMessageW(app.view()->hwnd(), EM_SETLIMITTEXT, c.limit, 0);
        std::wstring path = qw::scratchFile("qdoc-refused", L"r.txt", c.bytes);
        app.openDocumentFile(path);
        ASSERT_EQ(app.boxes.size(), 1u) << c.what;
        std::wstring expected = winText::fromUtf8(
            translateFormat(platform::loadString(c.message).c_str(), winText::toUtf8(path).c_str()).str());
        EXPECT_EQ(app.boxes[0].text, expected) << c.what;
        EXPECT_TRUE(app.boxes[0].type & MB_ICONERROR) << c.what;
        EXPECT_EQ(app.view()->text(), L"") << c.what;
        EXPECT_EQ(wt::narrow(app.doc()->title()), "Untitled") << c.what;
        EXPECT_EQ(wt::readWide(path), c.bytes) << c.what << ": the file is untouched";
    }
}

TEST(QuillonDocument, AMissingFileShowsMessage200AndAnEmptyUntitledView)
{
    QuillonTestApp app(L"quillonTests-doc");
    std::wstring present = qw::scratchFile("qdoc-missing", L"present.txt", "old text");
    ASSERT_NE(app.openDocumentFile(present), nullptr);
    std::wstring missing = wt::scratch("qdoc-missing2") + L"\\nowhere.txt";
    EXPECT_NE(app.openDocumentFile(missing), nullptr) << "the framework sees success";
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(wt::narrow(app.boxes[0].text),
              "Error: The file " + wt::narrow(missing) + " does not exist or could not be opened");
    EXPECT_TRUE(app.boxes[0].type & MB_ICONERROR);
    EXPECT_EQ(app.view()->text(), L"");
    EXPECT_EQ(wt::narrow(app.doc()->title()), "Untitled");
    EXPECT_TRUE(app.doc()->pathName().empty());
    EXPECT_EQ(wt::narrow(caption(app)), "Untitled - Quillon 4.3.4002");
}

TEST(QuillonDocument, NewDocumentEmptiesTheViewAndTheCaptionShowsThePath)
{
    QuillonTestApp app(L"quillonTests-doc");
    std::wstring path = qw::scratchFile("qdoc-new", L"n.txt", "something");
    ASSERT_NE(app.openDocumentFile(path), nullptr);
    EXPECT_EQ(caption(app), path + L" - Quillon 4.3.4002");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    EXPECT_EQ(app.view()->text(), L"");
    EXPECT_EQ(wt::narrow(app.doc()->title()), "Untitled");
}

TEST(QuillonDocument, TypedTextIsSavedThroughSaveAs)
{
    QuillonTestApp app(L"quillonTests-doc");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    HWND edit = app.view()->hwnd();
    SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"typed \u00e9\r\nline"));
    EXPECT_TRUE(app.doc()->isModified());
    std::wstring target = wt::scratch("qdoc-saveas") + L"\\\u65b0.txt";
    app.fileAnswers.push_back(target);
    ASSERT_TRUE(app.doc()->doFileSave());
    EXPECT_EQ(wt::readWide(target), "typed \xC3\xA9\r\nline");
    EXPECT_EQ(app.doc()->title(), target);
    EXPECT_FALSE(app.doc()->isModified());
}

TEST(QuillonView, CourierNewTenPointWrappingWithoutHorizontalScroll)
{
    QuillonTestApp app(L"quillonTests-view");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    HWND edit = app.view()->hwnd();
    LONG style = GetWindowLongW(edit, GWL_STYLE);
    EXPECT_FALSE(style & WS_HSCROLL);
    EXPECT_FALSE(style & ES_AUTOHSCROLL);
    EXPECT_TRUE(style & WS_VSCROLL);
    EXPECT_FALSE(style & ES_READONLY);

    HFONT font = reinterpret_cast<HFONT>(SendMessageW(edit, WM_GETFONT, 0, 0));
    ASSERT_NE(font, nullptr);
    LOGFONTW description = {};
    ASSERT_EQ(GetObjectW(font, sizeof description, &description), static_cast<int>(sizeof description));
    EXPECT_EQ(std::wstring(description.lfFaceName), L"Courier New");
    HDC screen = GetDC(nullptr);
    EXPECT_EQ(description.lfHeight, -MulDiv(100, GetDeviceCaps(screen, LOGPIXELSY), 720));
    ReleaseDC(nullptr, screen);

    SetWindowPos(app.mainFrame()->hwnd(), nullptr, 0, 0, 400, 300, SWP_NOZORDER);
    std::wstring longLine(600, L'x');
    app.view()->setText(longLine);
    LRESULT lines = SendMessageW(edit, EM_GETLINECOUNT, 0, 0);
    EXPECT_GT(lines, 5) << "600 characters in a 400-pixel window wrap into several display lines";
    EXPECT_EQ(app.view()->text(), longLine) << "wrapping adds no characters";
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

TEST(QuillonFrame, MenuAndAcceleratorsComeFromResource128AndTheTitleIsTheFullName)
{
    QuillonTestApp app(L"quillonTests-frame");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    auto* frame = static_cast<qwzCMainFrame*>(app.mainFrame());
    EXPECT_TRUE(frame->menuTranslated());
    HMENU menu = GetMenu(frame->hwnd());
    ASSERT_NE(menu, nullptr);
    EXPECT_GE(GetMenuItemCount(menu), 3);
    wchar_t first[64] = {};
    GetMenuStringW(menu, 0, first, 64, MF_BYPOSITION);
    EXPECT_EQ(std::wstring(first), L"&File");
    ASSERT_NE(frame->accelerators(), nullptr);
    ACCEL table[64];
    int count = CopyAcceleratorTableW(frame->accelerators(), table, 64);
    bool ctrlG = false;
    for (int i = 0; i < count; ++i)
        ctrlG |= table[i].cmd == qwzCQuillonView::goToLineCommand && table[i].key == 'G' && (table[i].fVirt & FCONTROL);
    EXPECT_TRUE(ctrlG) << "Ctrl+G goes to line";
    EXPECT_EQ(wt::narrow(caption(app)), "Untitled - Quillon 4.3.4002");
}

} // namespace
