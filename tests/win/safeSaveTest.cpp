// Saving never loses the user's file: success replaces the content (in folders past MAX_PATH too); a
// read-only target, a target locked by another opener, a full disk (a really full 64 KiB volume mounted
// by fullDisk.sh where mounting is allowed, and always a write failure simulated through the test hook)
// and a process killed between flushing the temporary file and replacing the target all leave the
// original intact; failures leave no temporary file and tell the user. When the original was moved aside
// and cannot come back, both contents stay and the message names them.
#include "winTestApp.h"

#include "resourceIds.h"
#include "win/winSafeSave.h"
#include "win/winText.h"

#include <gtest/gtest.h>

#include "testSupport.h"

#include <algorithm>
#include <cstdlib>

namespace
{

const std::string original = "the user's original text\r\n";
const std::string replacement = "new content \xe2\x9c\x93\r\n";

// A folder whose path is longer than MAX_PATH below `dir`. The test's own file access goes through the
// "\\?\" form, which takes any length on every Windows; the code under test gets the plain path.
// A killed run's folder (scratch() cannot remove it) is taken over, emptied, and removed at the end.
struct LongFolder {
    std::wstring path;
    std::wstring make(const std::wstring& dir)
    {
        path = dir + L"\\a folder with a long name \u00e9 " + std::wstring(MAX_PATH - 40, L'x');
        CreateDirectoryW((L"\\\\?\\" + path).c_str(), nullptr);
        removeFiles();
        return path;
    }
    void removeFiles()
    {
        for (const std::wstring& name : wt::listDir(L"\\\\?\\" + path))
            DeleteFileW((L"\\\\?\\" + path + L"\\" + name).c_str());
    }
    ~LongFolder()
    {
        if (!path.empty()) {
            removeFiles();
            RemoveDirectoryW((L"\\\\?\\" + path).c_str());
        }
    }
};

struct Fixture {
    std::wstring dir, path;
    bool longPath;
    LongFolder folder;
    explicit Fixture(const std::string& name, bool create = true, bool longPath = false) : longPath(longPath)
    {
        dir = wt::scratch(name);
        if (longPath)
            dir = folder.make(dir);
        path = dir + L"\\doc \u00fc.txt";
        if (create)
            wt::writeWide(io(path), original);
    }
    // How the test itself reaches `p`.
    std::wstring io(const std::wstring& p) const
    {
        return longPath ? L"\\\\?\\" + p : p;
    }
    std::vector<std::wstring> files() const
    {
        auto names = wt::listDir(io(dir));
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST(SafeSaveTest, SuccessReplacesOrCreatesTheContentAndLeavesOnlyTheTarget)
{
    for (bool longPath : {false, true}) {
        for (bool existing : {true, false}) {
            Fixture f(std::string(existing ? "save-ok" : "save-new") + (longPath ? "-long" : ""), existing, longPath);
            ASSERT_EQ(f.path.size() > MAX_PATH, longPath);
            for (const std::string& bytes : {replacement, std::string()}) {
                std::string label = std::string(existing ? "existing" : "new") + (longPath ? ", long path" : "");
                winSaveResult r = winSafeSave::write(f.path, bytes);
                ASSERT_TRUE(r.ok) << label << ": step " << r.failedStep << " error " << r.error;
                EXPECT_EQ(wt::readWide(f.io(f.path)), bytes) << label;
                EXPECT_EQ(f.files(), std::vector<std::wstring>{L"doc \u00fc.txt"}) << label;
            }
        }
    }
}

// ReplaceFileW moves the original aside and fails; then something takes the name before the original
// can come back.
std::wstring movedAsideTarget;
DWORD moveAsideAndBlock(winSafeSave::Point p, const std::wstring& file)
{
    if (p == winSafeSave::Point::Replacing)
        return MoveFileW(movedAsideTarget.c_str(), file.c_str()) ? ERROR_UNABLE_TO_MOVE_REPLACEMENT_2 : GetLastError();
    if (p == winSafeSave::Point::Restoring)
        CreateDirectoryW(file.c_str(), nullptr);
    return ERROR_SUCCESS;
}

TEST(SafeSaveTest, AFailedSaveKeepsTheOriginalAndTellsTheUserWhichFileAndWhy)
{
    const struct {
        const char* what;
        unsigned message;
    } cases[] = {{"read-only", WIN_IDS_SAVE_ACCESS},
                 {"locked", WIN_IDS_SAVE_ACCESS},
                 {"full", WIN_IDS_SAVE_DISK_FULL},
                 {"moved aside", WIN_IDS_SAVE_KEPT_BOTH}};
    for (const auto& c : cases) {
        const std::string what = c.what;
        Fixture f("save-failure");
        wt::TestApp app(L"winTests-save");
        auto* doc = static_cast<wt::TestDocument*>(app.openDocumentFile(f.path));
        ASSERT_NE(doc, nullptr);
        doc->bytes = replacement;
        doc->setModified();
        movedAsideTarget = f.path;
        HANDLE lock = INVALID_HANDLE_VALUE;
        if (what == "read-only") {
            ASSERT_TRUE(SetFileAttributesW(f.path.c_str(), FILE_ATTRIBUTE_READONLY));
        } else if (what == "locked") {
            lock = CreateFileW(f.path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
            ASSERT_NE(lock, INVALID_HANDLE_VALUE) << "the lock was not taken";
        } else if (what == "full") { // the disk fills while the temporary file is written
            winSafeSave::setTestHook([](winSafeSave::Point p, const std::wstring&) -> DWORD {
                return p == winSafeSave::Point::TempWritten ? ERROR_DISK_FULL : ERROR_SUCCESS;
            });
        } else {
            winSafeSave::setTestHook(moveAsideAndBlock);
        }
        // a read-only file goes to Save As, which the user cancels; save to the name directly instead
        EXPECT_FALSE(doc->doSave(f.path)) << what;
        winSafeSave::setTestHook(nullptr);
        if (lock != INVALID_HANDLE_VALUE)
            CloseHandle(lock);
        SetFileAttributesW(f.path.c_str(), FILE_ATTRIBUTE_NORMAL);
        ASSERT_EQ(app.boxes.size(), 1u) << what;
        EXPECT_EQ(app.boxes[0].type & MB_ICONMASK, UINT(MB_ICONERROR)) << what;
        EXPECT_TRUE(doc->isModified()) << what;
        if (what != "moved aside") {
            EXPECT_EQ(wt::narrow(app.boxes[0].text), wt::narrow(winText::formatId(c.message, {f.path}))) << what;
            EXPECT_EQ(wt::readWide(f.path), original) << what;
            EXPECT_EQ(f.files().size(), 1u) << what << ": a temporary file was left behind";
            continue;
        }
        // nothing is lost: the original and the new content stay, and the message says where
        std::wstring kept[2];
        for (const std::wstring& name : f.files())
            if (name != L"doc \u00fc.txt")
                kept[name.size() > 4 && name.substr(name.size() - 4) == L".bak" ? 0 : 1] = f.dir + L"\\" + name;
        EXPECT_EQ(wt::readWide(kept[0]), original);
        EXPECT_EQ(wt::readWide(kept[1]), replacement);
        EXPECT_EQ(app.boxes[0].text, winText::formatId(c.message, {f.path, kept[0], kept[1]}));
        RemoveDirectoryW(f.path.c_str());
    }
}

TEST(SafeSaveTest, AProcessKilledBetweenTheStepsKeepsTheOriginal)
{
    Fixture f("save-killed");
    const wchar_t event[] = L"Local\\winSafeSaveChildFlushed";
    HANDLE flushed = CreateEventW(nullptr, TRUE, FALSE, event);
    ASSERT_NE(flushed, nullptr);
    std::wstring child = winText::fromUtf8(qt::hostPath(SAFE_SAVE_CHILD));
    std::wstring commandLine =
        L"\"" + child + L"\" \"" + f.path + L"\" \"" + winText::fromUtf8(replacement) + L"\" " + event;
    STARTUPINFOW si = {};
    si.cb = sizeof si;
    PROCESS_INFORMATION pi = {};
    BOOL started =
        CreateProcessW(child.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi);
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

// Runs only on the 64 KiB volume that fullDisk.sh mounts.
TEST(SafeSaveFullDisk, AFullVolumeFailsTheSaveAndKeepsTheOriginal)
{
    const char* mounted = std::getenv("QUILLON_FULL_DISK_DIR");
    if (!mounted || !*mounted)
        GTEST_SKIP() << "runs only on the small volume of fullDisk.sh";
    std::wstring dir = winText::fromUtf8(qt::hostPath(mounted));
    std::wstring path = dir + L"\\on full disk.txt";
    wt::writeWide(path, original);
    std::string tooBig(256 * 1024, 'x');

    winSaveResult r = winSafeSave::write(path, tooBig);
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.failedStep, winSaveResult::WriteTemp);
    EXPECT_EQ(r.error, DWORD(ERROR_DISK_FULL));
    EXPECT_EQ(wt::readWide(path), original);
    EXPECT_EQ(wt::listDir(dir), std::vector<std::wstring>{L"on full disk.txt"});

    // the space came back: a save that fits still works (the message a full disk gives is the failure
    // table's)
    ASSERT_TRUE(winSafeSave::write(path, replacement).ok);
    EXPECT_EQ(wt::readWide(path), replacement);

    DeleteFileW(path.c_str());
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
