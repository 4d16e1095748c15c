// Saving never loses the user's file: success replaces the content; a read-only target, a target locked
// by another opener, a full disk (simulated through the test hook: no small volume can be made under Wine
// here) and a process killed between flushing the temporary file and replacing the target all leave the
// original intact; failures leave no temporary file and tell the user.
#include "winTestApp.h"

#include "resourceIds.h"
#include "win/winSafeSave.h"
#include "win/winText.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

const std::string original = "the user's original text\r\n";
const std::string replacement = "new content \xe2\x9c\x93\r\n";

struct Fixture {
    std::wstring dir, path;
    explicit Fixture(const std::string& name, bool create = true)
    {
        dir = wt::scratch(name);
        path = dir + L"\\doc \u00fc.txt";
        if (create)
            wt::writeWide(path, original);
    }
    std::vector<std::wstring> files() const
    {
        auto names = wt::listDir(dir);
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST(SafeSaveTest, SuccessReplacesTheContentAndLeavesOnlyTheTarget)
{
    Fixture f("save-ok");
    winSaveResult r = winSafeSave::write(f.path, replacement);
    ASSERT_TRUE(r.ok) << "step " << r.failedStep << " error " << r.error;
    EXPECT_EQ(wt::readWide(f.path), replacement);
    EXPECT_EQ(f.files(), std::vector<std::wstring>{L"doc \u00fc.txt"});
}

TEST(SafeSaveTest, ANewFileIsCreatedAndAnEmptySaveEmptiesTheFile)
{
    Fixture f("save-new", false);
    ASSERT_TRUE(winSafeSave::write(f.path, replacement).ok);
    EXPECT_EQ(wt::readWide(f.path), replacement);
    ASSERT_TRUE(winSafeSave::write(f.path, "").ok);
    EXPECT_EQ(wt::readWide(f.path), "");
    EXPECT_EQ(f.files().size(), 1u);
}

TEST(SafeSaveTest, AReadOnlyTargetFailsAndKeepsTheOriginal)
{
    Fixture f("save-readonly");
    ASSERT_TRUE(SetFileAttributesW(f.path.c_str(), FILE_ATTRIBUTE_READONLY));
    winSaveResult r = winSafeSave::write(f.path, replacement);
    SetFileAttributesW(f.path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.error, DWORD(ERROR_ACCESS_DENIED));
    EXPECT_EQ(wt::readWide(f.path), original);
    EXPECT_EQ(f.files().size(), 1u) << "a temporary file was left behind";
}

TEST(SafeSaveTest, ALockedTargetFailsAndKeepsTheOriginal)
{
    Fixture f("save-locked");
    HANDLE lock = CreateFileW(f.path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    winSaveResult r = winSafeSave::write(f.path, replacement);
    CloseHandle(lock);
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.failedStep, winSaveResult::Replace) << "error " << r.error;
    EXPECT_EQ(wt::readWide(f.path), original);
    EXPECT_EQ(f.files().size(), 1u) << "a temporary file was left behind: " << wt::narrow(f.files().back());
}

TEST(SafeSaveTest, AFullDiskWhileWritingKeepsTheOriginal)
{
    Fixture f("save-full");
    winSafeSave::setTestHook([](winSafeSave::Point p, const std::wstring&) -> DWORD {
        return p == winSafeSave::Point::TempWritten ? ERROR_DISK_FULL : ERROR_SUCCESS;
    });
    winSaveResult r = winSafeSave::write(f.path, replacement);
    winSafeSave::setTestHook(nullptr);
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.error, DWORD(ERROR_DISK_FULL));
    EXPECT_EQ(wt::readWide(f.path), original);
    EXPECT_EQ(f.files().size(), 1u) << "a temporary file was left behind";
}

TEST(SafeSaveTest, ADocumentSaveThatFailsTellsTheUserWhichFileAndWhy)
{
    struct Case {
        const char* what;
        unsigned message;
    };
    for (const Case c : {Case{"read-only", WIN_IDS_SAVE_ACCESS}, Case{"full", WIN_IDS_SAVE_DISK_FULL}}) {
        Fixture f("save-report");
        wt::TestApp app(L"winTests-save");
        auto* doc = static_cast<wt::TestDocument*>(app.openDocumentFile(f.path));
        ASSERT_NE(doc, nullptr);
        doc->bytes = replacement;
        doc->setModified();
        if (std::string(c.what) == "read-only")
            SetFileAttributesW(f.path.c_str(), FILE_ATTRIBUTE_READONLY);
        else
            winSafeSave::setTestHook([](winSafeSave::Point, const std::wstring&) -> DWORD { return ERROR_DISK_FULL; });
        // a read-only file goes to Save As, which the user cancels; save to the name directly instead
        EXPECT_FALSE(doc->doSave(f.path)) << c.what;
        winSafeSave::setTestHook(nullptr);
        SetFileAttributesW(f.path.c_str(), FILE_ATTRIBUTE_NORMAL);
        ASSERT_EQ(app.boxes.size(), 1u) << c.what;
        EXPECT_EQ(app.boxes[0].text, winText::formatId(c.message, {f.path})) << c.what;
        EXPECT_EQ(app.boxes[0].type & MB_ICONMASK, UINT(MB_ICONERROR)) << c.what;
        EXPECT_TRUE(doc->isModified()) << c.what;
        EXPECT_EQ(wt::readWide(f.path), original) << c.what;
        EXPECT_EQ(f.files().size(), 1u) << c.what;
    }
}

const wchar_t childVariable[] = L"WIN_SAFE_SAVE_CHILD_TARGET";
const wchar_t childEvent[] = L"Local\\winSafeSaveChildFlushed";

// The child half of the kill test: does nothing in a normal run.
TEST(SafeSaveChild, StopsAfterTheFlush)
{
    wchar_t target[1024] = {};
    if (!GetEnvironmentVariableW(childVariable, target, 1024))
        GTEST_SKIP() << "runs only as the child of AProcessKilledBetweenTheStepsKeepsTheOriginal";
    winSafeSave::setTestHook([](winSafeSave::Point p, const std::wstring&) -> DWORD {
        if (p == winSafeSave::Point::TempFlushed) {
            HANDLE flushed = OpenEventW(EVENT_MODIFY_STATE, FALSE, childEvent);
            SetEvent(flushed);
            Sleep(INFINITE);
        }
        return ERROR_SUCCESS;
    });
    winSafeSave::write(target, replacement);
}

TEST(SafeSaveTest, AProcessKilledBetweenTheStepsKeepsTheOriginal)
{
    Fixture f("save-killed");
    HANDLE flushed = CreateEventW(nullptr, TRUE, FALSE, childEvent);
    ASSERT_NE(flushed, nullptr);
    wchar_t exe[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    std::wstring commandLine = L"\"" + std::wstring(exe) + L"\" --gtest_filter=SafeSaveChild.StopsAfterTheFlush";
    SetEnvironmentVariableW(childVariable, f.path.c_str());
    // the child's own test report would only clutter this one
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    HANDLE nul = CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_WRITE, &inherit, OPEN_EXISTING, 0, nullptr);
    STARTUPINFOW si = {};
    si.cb = sizeof si;
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdOutput = si.hStdError = nul;
    PROCESS_INFORMATION pi = {};
    BOOL started = CreateProcessW(exe, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &si, &pi);
    CloseHandle(nul);
    SetEnvironmentVariableW(childVariable, nullptr);
    ASSERT_TRUE(started) << GetLastError();
    DWORD waited = WaitForSingleObject(flushed, 60000);
    TerminateProcess(pi.hProcess, 9);
    WaitForSingleObject(pi.hProcess, 30000);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    CloseHandle(flushed);
    ASSERT_EQ(waited, WAIT_OBJECT_0) << "the child never reached the flushed temporary file";

    EXPECT_EQ(wt::readWide(f.path), original);
    // the flushed temporary file holds the complete new text: the kill came between the steps
    auto names = f.files();
    ASSERT_EQ(names.size(), 2u);
    std::wstring temp = names[0] == L"doc \u00fc.txt" ? names[1] : names[0];
    EXPECT_EQ(wt::readWide(f.dir + L"\\" + temp), replacement);
}

TEST(SafeSaveTest, DirectoryOfKeepsRootsAndDrives)
{
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {{L"C:\\dir\\file.txt", L"C:\\dir"},
                                                               {L"C:\\file.txt", L"C:\\"},
                                                               {L"file.txt", L"."},
                                                               {L"\\\\server\\share\\f", L"\\\\server\\share"},
                                                               {L"a/b/c", L"a/b"},
                                                               {L"\\f", L"\\"}};
    for (const auto& [path, dir] : cases)
        EXPECT_EQ(winSafeSave::directoryOf(path), dir) << wt::narrow(path);
}

} // namespace
