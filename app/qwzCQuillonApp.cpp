// Start-up and shut-down of the window program. Every step that fails ends start-up with one translated
// message; a command-line run (usage text) ends before any window exists.
#include "app/qwzCQuillonApp.h"

#include <commctrl.h>
#include <ole2.h>
#include <shellapi.h>

#include "app/qwzCAboutDlg.h"
#include "app/qwzCMainFrame.h"
#include "app/qwzCStaticWithLink.h"
#include "app/qwzCText.h"
#include "app/qwzInstallDir.h"
#include "app/qwzStartup.h"
#include "document/qwzCQuillonDoc.h"
#include "document/qwzCQuillonView.h"
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
    runStartupVersionCheck(frame->hwnd());
    return true;
}

int qwzCQuillonApp::exitInstance()
{
    int code = quitEarly_ ? exitCode_ : winApp::exitInstance();
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
