// The version check's window side. The requests block the user-interface thread, so the status text is
// painted before they start; on every way out the cursor comes back first, then the saved status text.
#include "http/qwzCCheckVersionDlg.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "app/qwzCText.h"
#include "app/qwzVersionInfo.h"
#include "document/qwzOutput.h"
#include "http/httpThing.h"
#include "http/qwzProductServer.h"
#include "res/resource.h"
#include "resourceIds.h"
#include "win/winApp.h"
#include "win/winFrame.h"

namespace
{

// Both requests of a check are over within this, so that a server that takes the connection and never
// answers holds the window for seconds, not minutes; the rest of 5 s is for what surrounds them.
constexpr std::chrono::milliseconds checkTimeLimit(4500);

// Shows "Checking for newer versions..." in the main frame's status bar for its lifetime.
class StatusText
{
public:
    StatusText() : frame_(winApp::instance() ? winApp::instance()->mainFrame() : nullptr)
    {
        if (!frame_)
            return;
        saved_ = frame_->messageText();
        frame_->setMessageText(qwzMessage(IDS_CHECKING_VERSION));
        RedrawWindow(frame_->hwnd(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
    ~StatusText()
    {
        if (frame_)
            frame_->setMessageText(saved_);
    }
    StatusText(const StatusText&) = delete;
    StatusText& operator=(const StatusText&) = delete;

private:
    winFrame* frame_;
    std::wstring saved_;
};

class WaitCursor
{
public:
    WaitCursor() : previous_(SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)))) {}
    ~WaitCursor()
    {
        SetCursor(previous_);
    }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HCURSOR previous_;
};

} // namespace

int runVersionCheck(VersionCheckResult& result)
{
    qwzProductServer server = qwzProductServer::current(qwzOutput::standardOutput());
    std::cout.flush();
    // destroyed in reverse: the cursor first, then the status text
    StatusText status;
    WaitCursor cursor;

    // each client lives for its one request; both requests are made whatever the first gave, the first
    // within half of the time limit so that the second always has the other half
    const httpDeadline deadline = httpDeadline::after(checkTimeLimit);
    const char* product = qwzVersionInfo::instance().productName.c_str();
    int port = static_cast<int>(server.port);
    qwzVersionAnswers answers;
    char* received = nullptr;
    {
        httpVersion client(server.host.c_str(), port, server.secure);
        client.setDeadline(deadline.share(2));
        answers.keyStatus = client.get(product, received);
    }
    std::unique_ptr<char[]> key(received);
    received = nullptr;
    {
        httpProductAttribute client(server.host.c_str(), port, server.secure);
        client.setDeadline(deadline);
        answers.displayStatus = client.get(product, "version_string", received);
    }
    std::unique_ptr<char[]> display(received);
    answers.key = key.get();
    answers.display = display.get();
    result = qwzVersionVerdict(answers, server.host.c_str());
    return 1;
}

void runStartupVersionCheck(HWND parent)
{
    const char* disabled = std::getenv("QWZ_DISABLE_STARTUP_VERSION_CHECK");
    if (disabled && *disabled)
        return;
    VersionCheckResult result;
    if (runVersionCheck(result) && !result.upToDate) {
        qwzCCheckVersionDlg dialog(result, parent);
        dialog.doModal();
    }
}

qwzCCheckVersionDlg::qwzCCheckVersionDlg(HWND parent) : qwzCDialog(IDD_CHECK_VERSION, parent)
{
    translatedControls.push_back(IDOK);
    usesRichEdit = true;
    VersionCheckResult result;
    runVersionCheck(result);
    message_ = result.message;
}

qwzCCheckVersionDlg::qwzCCheckVersionDlg(const VersionCheckResult& result, HWND parent)
    : qwzCDialog(IDD_CHECK_VERSION, parent), message_(result.message)
{
    translatedControls.push_back(IDOK);
    usesRichEdit = true;
}

void qwzCCheckVersionDlg::doDataExchange(winDataExchange&)
{
    if (!link_.hwnd())
        link_.attach(GetDlgItem(hwnd(), IDC_VERSION_MESSAGE));
}

bool qwzCCheckVersionDlg::OnInitDialog()
{
    qwzCDialog::OnInitDialog();
    if (!message_.text())
        return false;
    link_.setText(message_);
    return true;
}

bool qwzCCheckVersionDlg::OnNotify(const NMHDR& header, LRESULT& result)
{
    return link_.handleNotify(header, result);
}
