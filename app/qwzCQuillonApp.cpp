// Start-up and shut-down of the window program. Every step that fails ends start-up with one translated
// message; a command-line run (usage text) ends before any window exists.
#include "app/qwzCQuillonApp.h"

#include <commctrl.h>
#include <ole2.h>
#include <shellapi.h>

#include "app/qwzCAboutDlg.h"
#include "app/qwzCCrashReport.h"
#include "app/qwzCMainFrame.h"
#include "app/qwzCRecoveryDlg.h"
#include "app/qwzCStaticWithLink.h"
#include "app/qwzCText.h"
#include "app/qwzInstallDir.h"
#include "app/qwzStartup.h"
#include "document/qwzCQuillonDoc.h"
#include "document/qwzCQuillonView.h"
#include "document/qwzRecoveryFile.h"
#include "http/qwzCCheckVersionDlg.h"
#include "resourceIds.h"
#include "win/winCommandLineInfo.h"
#include "win/winDocTemplate.h"
#include "win/winFrame.h"

namespace
{

constexpr unsigned appAboutCommand = 57664;

// The framework's own texts go through the same catalog as Quillon's.
std::wstring translateForFramework(const std::wstring& english)
{
    return qwzWide(translate(qwzUtf8(english).c_str()));
}

} // namespace

qwzCQuillonApp::qwzCQuillonApp() = default;

qwzCQuillonApp::~qwzCQuillonApp() = default;

int qwzCQuillonApp::run(int showCommand)
{
    qwzCQuillonApp app;
    return app.winMain(showCommand);
}

void qwzCQuillonApp::startTranslation(const utString& installRoot)
{
    qwzAppCatalog::setBaseDirectory(installDir(Locale, installRoot));
    winApp::setTranslator(translateForFramework);
}

bool qwzCQuillonApp::initWindowing()
{
    INITCOMMONCONTROLSEX controls = {};
    controls.dwSize = 8;
    controls.dwICC = 0xFF;
    InitCommonControlsEx(&controls);
    // the link control is a rich-edit control; without the library only the dialogs that hold one fail,
    // each with its message, so start-up goes on
    qwzCStaticWithLink::loadLibrary();
    if (!winApp::initInstance())
        return false;
    oleStarted_ = SUCCEEDED(OleInitialize(nullptr));
    if (!oleStarted_) {
        messageBox(qwzMessage(IDP_OLE_INIT_FAILED), MB_OK);
        return false;
    }
    setRegistryKey(L"Tarvik");
    loadStdProfileSettings(4);
    addDocTemplate(winDocTemplate::make<qwzCQuillonDoc, qwzCQuillonView, qwzCMainFrame>(qwzCMainFrame::resourceId));
    return true;
}

bool qwzCQuillonApp::initInstance()
{
    startTranslation(qwzInstallRoot());
    if (!initWindowing())
        return quitEarly_ = true, false;

    qwzStartup startup;
    std::vector<std::string> words;
    for (const std::wstring& word : winCommandLineInfo::processArguments())
        words.push_back(qwzUtf8(word).str());
    if (startup.run(words, exitCode_) == qwzStartup::Quit)
        return quitEarly_ = true, false;

    winCommandLineInfo info;
    if (startup.commandLine().mode == qwzCommandLine::OpenFile) {
        info.shellCommand = winCommandLineInfo::FileOpen;
        info.fileName = qwzWide(startup.commandLine().fileName);
    }
    if (!processShellCommand(info))
        return quitEarly_ = true, false;
    winFrame* frame = mainFrame();
    if (!frame)
        return quitEarly_ = true, false;
    DragAcceptFiles(frame->hwnd(), TRUE);
    ShowWindow(frame->hwnd(), showCommand());
    UpdateWindow(frame->hwnd());
    startRecovery();
    offerLeftTexts();
    runStartupVersionCheck(frame->hwnd());
    return true;
}

void qwzCQuillonApp::startRecovery()
{
    auto* doc = static_cast<qwzCQuillonDoc*>(document());
    recovery_ = std::make_unique<qwzCRecoveryKeeper>();
    // without a folder nothing is kept, and Quillon works as before
    if (!doc || !recovery_->start())
        return;
    recovery_->setSource([doc](qwzCRecoveryKeeper::Snapshot& snapshot) { return doc->recoverySnapshot(snapshot); });
    doc->setRecovery(recovery_.get());
    qwzCCrashReport::install(recovery_.get());
    // an installer or an update that restarts Windows brings Quillon back, and with it the offer;
    // a crash has its own report, and a hang is not worth a loop of restarts
    RegisterApplicationRestart(L"", RESTART_NO_CRASH | RESTART_NO_HANG);
}

void qwzCQuillonApp::offerLeftTexts()
{
    if (!recovery_ || !recovery_->started())
        return;
    winFrame* frame = mainFrame();
    for (const std::wstring& file : recovery_->claimLeftFiles()) {
        qwzRecoveryRecord record;
        if (qwzRecoveryFile::read(qwzUtf8(file).c_str(), record) != qwzRecoveryFile::ParseResult::Ok) {
            messageBox(qwzMessage(IDS_RECOVERY_DAMAGED, qwzUtf8(file).c_str()), MB_OK | MB_ICONWARNING);
            continue;
        }
        std::wstring name = record.path.empty() ? qwzMessage(IDS_UNTITLED) : qwzWide(record.path.c_str());
        qwzCRecoveryDlg offer(frame ? frame->hwnd() : nullptr, name);
        INT_PTR answer = offer.doModal();
        if (answer == qwzCRecoveryDlg::discardAnswer)
            recovery_->deleteLeftFile(file);
        // one document at a time: the texts not restored now are offered at the next start
        if (answer == IDOK && restoreLeftText(file))
            return;
    }
}

bool qwzCQuillonApp::restoreLeftText(const std::wstring& file)
{
    auto* doc = static_cast<qwzCQuillonDoc*>(document());
    qwzRecoveryRecord record;
    if (!doc || qwzRecoveryFile::read(qwzUtf8(file).c_str(), record) != qwzRecoveryFile::ParseResult::Ok ||
        !doc->restore(record))
        return false;
    // the left file goes only once this run's own file holds the text
    if (recovery_->writeNow() == qwzCRecoveryKeeper::Written::Yes)
        recovery_->deleteLeftFile(file);
    return true;
}

int qwzCQuillonApp::exitInstance()
{
    int code = quitEarly_ ? exitCode_ : winApp::exitInstance();
    // a clean end: the text was saved or given up at the frame's question
    if (recovery_) {
        recovery_->finish();
        // past this point a crash has no text to keep
        qwzCCrashReport::install(nullptr);
    }
    if (oleStarted_) {
        OleUninitialize();
        oleStarted_ = false;
    }
    return code;
}

bool qwzCQuillonApp::preTranslateMessage(MSG& msg)
{
    if (msg.message == WM_KEYDOWN && msg.wParam == VK_ESCAPE) {
        auto* doc = static_cast<qwzCQuillonDoc*>(document());
        if (doc && doc->loading()) {
            doc->stopLoading();
            return true;
        }
    }
    return winApp::preTranslateMessage(msg);
}

bool qwzCQuillonApp::onCommand(unsigned id)
{
    if (id == appAboutCommand) {
        onAppAbout();
        return true;
    }
    if (id == ID_HELP_CHECK_VERSION) {
        onCheckVersion();
        return true;
    }
    return winApp::onCommand(id);
}

bool qwzCQuillonApp::onUpdateCommand(unsigned id, winCommandState& state)
{
    if (id == ID_HELP_CHECK_VERSION || id == appAboutCommand) {
        state.enabled = true;
        return true;
    }
    return winApp::onUpdateCommand(id, state);
}

void qwzCQuillonApp::onAppAbout()
{
    winFrame* frame = mainFrame();
    qwzCAboutDlg about(frame ? frame->hwnd() : nullptr);
    about.doModal();
}

void qwzCQuillonApp::onCheckVersion()
{
    winFrame* frame = mainFrame();
    qwzCCheckVersionDlg dialog(frame ? frame->hwnd() : nullptr);
    dialog.doModal();
}
