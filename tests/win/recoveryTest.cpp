// Recovery of unsaved text in-process: typing into the real view writes the recovery file after a
// pause, saving deletes it, a restored text is a modified document that saves to its own path, two runs
// never take each other's files, the offer's buttons, and the crash report from a real exception.
#include "quillonTestApp.h"

#include "app/qwzCCrashReport.h"
#include "app/qwzCRecoveryDlg.h"
#include "app/qwzCText.h"
#include "document/qwzCRecoveryKeeper.h"
#include "document/qwzRecoveryFile.h"
#include "res/resource.h"
#include "resourceIds.h"

#include <gtest/gtest.h>

namespace
{

using qw::QuillonTestApp;
const unsigned save = ID_FILE_SAVE;

// An application with a document and a keeper in a scratch folder, wired as Quillon wires them.
struct Kept {
    explicit Kept(const std::string& dir) : folder(wt::scratch(dir)), keeper(folder)
    {
        app.openDocumentFile(std::wstring());
        EXPECT_TRUE(keeper.start());
        qwzCQuillonDoc* doc = app.doc();
        keeper.setSource([doc](qwzCRecoveryKeeper::Snapshot& s) { return doc->recoverySnapshot(s); });
        doc->setRecovery(&keeper);
    }
    ~Kept()
    {
        app.doc()->setRecovery(nullptr);
    }
    // Types as a user does: through the control, which notifies the view.
    void type(const wchar_t* text)
    {
        SendMessageW(app.view()->hwnd(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
    }
    // Runs the message loop until `done` holds or `seconds` pass.
    bool pumpUntil(const std::function<bool()>& done, int seconds = 10)
    {
        for (DWORD start = GetTickCount(); GetTickCount() - start < DWORD(seconds) * 1000;) {
            app.pumpMessages();
            if (done())
                return true;
            Sleep(20);
        }
        return done();
    }
    bool fileThere() const
    {
        return GetFileAttributesW(keeper.file().c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    QuillonTestApp app{L"quillonTests-recovery"};
    std::wstring folder;
    qwzCRecoveryKeeper keeper;
};

qwzRecoveryRecord readRecord(const std::wstring& file)
{
    qwzRecoveryRecord record;
    EXPECT_EQ(qwzRecoveryFile::read(qwzUtf8(file).c_str(), record), qwzRecoveryFile::ParseResult::Ok)
        << wt::narrow(file);
    return record;
}

TEST(Recovery, TypingWritesTheFileAfterAPauseAndSavingDeletesIt)
{
    Kept kept("recovery-typing");
    std::wstring path = qw::scratchFile("recovery-typing-doc", L"notes.txt", "old");
    ASSERT_NE(kept.app.openDocumentFile(path), nullptr);
    kept.app.view()->setSelection(3, 3);
    kept.type(L" new \u00e9\r\nline");
    EXPECT_FALSE(kept.fileThere()) << "nothing is written while typing goes on";
    ASSERT_TRUE(kept.pumpUntil([&] { return kept.fileThere(); })) << "written after the pause";
    kept.keeper.waitIdle();
    qwzRecoveryRecord record = readRecord(kept.keeper.file());
    EXPECT_EQ(record.text, "old new \xC3\xA9\r\nline");
    EXPECT_EQ(qwzWide(record.path.c_str()), path);
    EXPECT_TRUE(record.encoding == utEncoding::Utf8);
    EXPECT_EQ(record.caret, 15u);
    EXPECT_EQ(wt::listDir(kept.folder).size(), 1u) << "no temporary file is left beside it";

    SendMessageW(kept.app.mainFrame()->hwnd(), WM_COMMAND, save, 0);
    kept.keeper.waitIdle();
    EXPECT_FALSE(kept.fileThere()) << "a saved text leaves nothing to recover";
    EXPECT_EQ(wt::readWide(path), "old new \xC3\xA9\r\nline");
}

TEST(Recovery, NewOpenAndACleanEndDeleteTheFile)
{
    Kept kept("recovery-discard");
    for (int way = 0; way < 3; ++way) {
        kept.type(L"x");
        ASSERT_TRUE(kept.pumpUntil([&] { return kept.fileThere(); })) << way;
        if (way < 2)
            kept.app.answers.push_back(IDNO); // "Save changes?"
        if (way == 0)
            kept.app.onFileNew();
        else if (way == 1)
            kept.app.openDocumentFile(qw::scratchFile("recovery-discard-doc", L"other.txt", "other"));
        else
            kept.keeper.finish();
        kept.keeper.waitIdle();
        EXPECT_FALSE(kept.fileThere()) << way;
        EXPECT_TRUE(wt::listDir(kept.folder).empty()) << way;
    }
}

TEST(Recovery, ARestartByWindowsKeepsTheTextWithoutAsking)
{
    Kept kept("recovery-restart");
    kept.type(L"before the update");
    HWND frame = kept.app.mainFrame()->hwnd();
    EXPECT_EQ(SendMessageW(frame, WM_QUERYENDSESSION, 0, ENDSESSION_CLOSEAPP), TRUE);
    EXPECT_TRUE(kept.app.boxes.empty()) << "no question";
    EXPECT_EQ(readRecord(kept.keeper.file()).text, "before the update");
    // a log-off still asks, and the test's Cancel keeps the session
    EXPECT_EQ(SendMessageW(frame, WM_QUERYENDSESSION, 0, 0), FALSE);
    EXPECT_EQ(kept.app.boxes.size(), 1u);
}

TEST(Recovery, RunsNeverTakeEachOthersFiles)
{
    std::wstring folder = wt::scratch("recovery-runs");
    qwzCRecoveryKeeper live(folder), second(folder), third(folder);
    ASSERT_TRUE(live.start() && second.start() && third.start());
    live.setSource([](qwzCRecoveryKeeper::Snapshot& s) { return s.text = L"live", true; });
    ASSERT_EQ(live.writeNow(), qwzCRecoveryKeeper::Written::Yes);
    std::wstring left = folder + L"\\00000010-0000000000000000.qrf";
    wt::writeWide(left, "QUILLON-RECOVERY 1\npath: \nencoding: UTF-8\ncaret: 0\nlength: 4\n\nleft");

    EXPECT_EQ(second.claimLeftFiles(), std::vector<std::wstring>{left}) << "a live run's file is not offered";
    EXPECT_TRUE(third.claimLeftFiles().empty()) << "a file offered by one run is not offered by another";
    second.deleteLeftFile(left);
    EXPECT_EQ(wt::readWide(left), "<missing>");
    EXPECT_EQ(wt::readWide(live.file()), "QUILLON-RECOVERY 1\npath: \nencoding: UTF-8\ncaret: 0\nlength: 4\n\nlive");
}

TEST(Recovery, TemporaryFilesOfAKilledWriteGoOnceTheyAreOld)
{
    std::wstring folder = wt::scratch("recovery-temporaries");
    std::wstring old = folder + L"\\~qsv0000abcd.tmp", fresh = folder + L"\\~qsv0000abce.tmp";
    wt::writeWide(old, "half written");
    wt::writeWide(fresh, "being written");
    HANDLE file = CreateFileW(old.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    FILETIME longAgo = {0, 0x01D00000};
    ASSERT_TRUE(SetFileTime(file, nullptr, nullptr, &longAgo));
    CloseHandle(file);
    qwzCRecoveryKeeper keeper(folder);
    ASSERT_TRUE(keeper.start());
    EXPECT_TRUE(keeper.claimLeftFiles().empty());
    EXPECT_EQ(wt::listDir(folder), std::vector<std::wstring>{L"~qsv0000abce.tmp"})
        << "a write under way keeps its file";
}

TEST(Recovery, ARestoredTextIsModifiedUnderItsPathAndSavesThere)
{
    struct Case {
        std::string path;
        std::wstring title;
        utEncoding encoding;
        std::string saved;
    };
    std::wstring path = wt::scratch("recovery-restore") + L"\\kept \u00fc.txt";
    wt::writeWide(path, "on disk");
    const std::string utf16 = std::string("\xFF\xFEt\0y\0p\0e\0d\0 \0\xAC\x20\r\0\n\0m\0o\0r\0e\0", 28);
    const Case cases[] = {{qwzUtf8(path).str(), path, utEncoding::Utf8, "typed \xE2\x82\xAC\r\nmore"},
                          {qwzUtf8(path).str(), path, utEncoding::Utf16LE, utf16},
                          {"", L"Untitled", utEncoding::Utf8, ""}};
    for (const Case& c : cases) {
        Kept kept("recovery-restore-run");
        qwzRecoveryRecord record;
        record.path = c.path;
        record.text = "typed \xE2\x82\xAC\r\nmore";
        record.caret = 3;
        record.encoding = c.encoding;
        ASSERT_TRUE(kept.app.doc()->restore(record));
        EXPECT_EQ(kept.app.view()->text(), L"typed \u20ac\r\nmore");
        EXPECT_TRUE(kept.app.doc()->isModified());
        EXPECT_EQ(kept.app.doc()->title(), c.title);
        size_t start = 9, end = 9;
        kept.app.view()->selection(start, end);
        EXPECT_EQ(end, 3u);
        if (c.path.empty())
            continue;
        SendMessageW(kept.app.mainFrame()->hwnd(), WM_COMMAND, save, 0);
        EXPECT_EQ(wt::readWide(path), c.saved) << "saved to its own path in its own encoding, no Save As";
        EXPECT_TRUE(kept.app.fileDialogsOpened.empty());
    }
}

TEST(Recovery, TheOfferRestoresByDefaultAndDiscardsOnRequest)
{
    for (bool discard : {false, true}) {
        qwzCRecoveryDlg offer(nullptr, L"C:\\notes\\today.txt");
        INT_PTR answer = 0;
        qw::whileModal([&] { answer = offer.doModal(); },
                       [&](HWND dialog) {
                           EXPECT_EQ(LOWORD(SendMessageW(dialog, DM_GETDEFID, 0, 0)), IDOK);
                           EXPECT_NE(qw::textOf(GetDlgItem(dialog, IDC_RECOVERY_MESSAGE)).find(L"C:\\notes\\today.txt"),
                                     std::wstring::npos);
                           SendMessageW(dialog, WM_COMMAND, discard ? IDC_RECOVERY_DISCARD : IDOK, 0);
                       });
        EXPECT_EQ(answer, discard ? qwzCRecoveryDlg::discardAnswer : IDOK);
    }
}

// The crash report from a real exception: a vectored handler hands the filter the exception's own
// pointers, then lets the raising code go on.
LONG crashVerdict = 0;

LONG WINAPI callFilter(EXCEPTION_POINTERS* exception)
{
    if (exception->ExceptionRecord->ExceptionCode != 0xE0515701)
        return EXCEPTION_CONTINUE_SEARCH;
    crashVerdict = qwzCCrashReport::filter(exception);
    return EXCEPTION_CONTINUE_EXECUTION;
}

TEST(Recovery, AnUnhandledExceptionWritesTheTextAndAMinidumpAndSaysWhere)
{
    Kept kept("recovery-crash");
    kept.type(L"not saved yet");
    LPTOP_LEVEL_EXCEPTION_FILTER previous = qwzCCrashReport::install(&kept.keeper, &kept.app);
    PVOID handler = AddVectoredExceptionHandler(1, callFilter);
    RaiseException(0xE0515701, 0, 0, nullptr);
    RemoveVectoredExceptionHandler(handler);
    SetUnhandledExceptionFilter(previous);

    EXPECT_EQ(crashVerdict, EXCEPTION_EXECUTE_HANDLER) << "the process is to end";
    EXPECT_EQ(readRecord(kept.keeper.file()).text, "not saved yet");
    std::wstring dump = kept.keeper.file().substr(0, kept.keeper.file().size() - 4) + L".dmp";
    EXPECT_EQ(wt::readWide(dump).substr(0, 4), "MDMP");
    ASSERT_EQ(kept.app.boxes.size(), 1u);
    EXPECT_NE(kept.app.boxes[0].text.find(kept.keeper.file()), std::wstring::npos)
        << wt::narrow(kept.app.boxes[0].text);
    EXPECT_NE(kept.app.boxes[0].text.find(dump), std::wstring::npos);
    EXPECT_EQ(kept.app.boxes[0].type & MB_ICONMASK, UINT(MB_ICONERROR));
}

} // namespace
