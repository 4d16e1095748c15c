// Test doubles for the window framework: an application that answers message boxes and file dialogs from
// scripts (a box left open would hang the run), a document whose bytes are its own, and wide-path file
// helpers that do not use the code under test.
#pragma once

#include "resourceIds.h"
#include "win/winApp.h"
#include "win/winDocTemplate.h"
#include "win/winDocument.h"
#include "win/winEditView.h"
#include "win/winFrame.h"

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace wt
{

// The frames take Quillon's own menu and accelerator table; tests/win/winTest.rc adds a dialog that cannot
// be made.
constexpr unsigned frameResource = IDR_MAINFRAME;
constexpr unsigned unmakeableDialog = 30002;

class TestApp : public winApp
{
public:
    struct Box {
        std::wstring text;
        UINT type;
    };
    std::vector<Box> boxes;
    std::deque<int> answers;              // next message-box answers; IDCANCEL/IDOK when empty
    std::deque<std::wstring> fileAnswers; // next file-dialog answers; empty text means Cancel
    std::vector<bool> fileDialogsOpened;  // true for Open, false for Save As
    bool realBoxes = false;               // record, then show the system's box instead of answering

    // An application with its own registry key and the test document template.
    explicit TestApp(const std::wstring& name = L"winTests");

    int messageBox(const std::wstring& text, UINT type, HWND owner = nullptr) override;
    bool promptFileName(bool open, std::wstring& path) override;
};

// A document whose file content is `bytes`, exactly.
class TestDocument : public winDocument
{
public:
    std::string bytes;
    bool onNewDocument() override;
    void serialize(std::string& out) override;
    bool deserialize(const std::string& in) override;
};

// A scratch directory as a wide path.
std::wstring scratch(const std::string& name);
// Whole-file read and write by wide name (the qt:: helpers under the UTF-8 code page), independent of
// winSafeSave. readWide answers "<missing>" for a file that is not there.
std::string readWide(const std::wstring& path);
void writeWide(const std::wstring& path, const std::string& bytes);
// The names of the files in `dir`.
std::vector<std::wstring> listDir(const std::wstring& dir);
// Removes HKCU\Software\QuillonTests\<app> so that a test starts without settings.
void clearSettings(const std::wstring& appName);

// UTF-8 for failure messages.
std::string narrow(const std::wstring& text);

// The view's selection as {start, end}.
std::pair<size_t, size_t> selection(const winEditView& view);

} // namespace wt
