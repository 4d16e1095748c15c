// Quillon's application object: the window side of start-up (common controls, rich edit, OLE, the
// "Tarvik" settings key with four recent files, the document template), the start-up steps that need no
// window, then the document named on the command line (or a new one) in a shown main window that
// accepts dropped files, and the start-up version check once that window is shown.
#pragma once

#include <memory>

#include "document/qwzCRecoveryKeeper.h"
#include "foundation/utString.h"
#include "win/winApp.h"

class qwzCQuillonApp : public winApp
{
public:
    qwzCQuillonApp();
    ~qwzCQuillonApp() override;

    // The whole program: start-up, message loop, shut-down; the process's exit status.
    static int run(int showCommand);

    // The first step of start-up: the catalogs' directory below `installRoot`, then the framework's
    // translation through them. In this order, because the program's domain takes the directory it
    // finds at the first translation, and any framework text may be that one.
    static void startTranslation(const utString& installRoot);

    bool initInstance() override;
    int exitInstance() override;
    // Esc stops a load of text still arriving (and is not a key for anything else then).
    bool preTranslateMessage(MSG& msg) override;
    bool onCommand(unsigned id) override;
    bool onUpdateCommand(unsigned id, winCommandState& state) override;

    // Runs the About box modally over the main window.
    void onAppAbout();
    // Checks for a later version and shows the verdict, whatever it is.
    void onCheckVersion();

private:
    // Steps before the installation tree: controls, rich edit, framework, OLE, settings, template.
    bool initWindowing();
    // Starts keeping the document's unsaved text, the crash report and the restart after an update.
    void startRecovery();
    // Offers the texts that runs which did not end cleanly left behind, until one is restored.
    void offerLeftTexts();
    // Restores one left text into the document; false when its file cannot be read (the user was told).
    bool restoreLeftText(const std::wstring& file);

    std::unique_ptr<qwzCRecoveryKeeper> recovery_;
    bool oleStarted_ = false;
    int exitCode_ = 0;
    bool quitEarly_ = false;
};
