// The application object: start-up and shut-down hooks, the message loop (modeless dialogs, the frame's
// accelerators, idle time), the document template, the settings key and recent-file list, the
// application's commands (New, Open, Exit, recent files, Print Setup), the session's printer and the seams through
// which every message box and file dialog of the framework passes. One per process.
#pragma once

#include "win/winPrinter.h"
#include "win/winServices.h"
#include "win/winText.h"

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

class winCommandLineInfo;
class winDocTemplate;
class winDocument;
class winFrame;
class winRecentFiles;

class winApp : public winServices
{
public:
    winApp();
    winApp(const winApp&) = delete;
    winApp& operator=(const winApp&) = delete;
    ~winApp() override;

    // Runs initInstance, the message loop and exitInstance; the process's exit status.
    int winMain(int showCommand);
    // Start-up; false ends the process without a message loop. The default returns true.
    virtual bool initInstance();
    // Shut-down; returns the exit status (the default: the WM_QUIT code).
    virtual int exitInstance();
    // The message loop until WM_QUIT; returns its code.
    int run();
    // Dispatches every message already queued (no waiting); false once WM_QUIT was seen.
    bool pumpMessages();
    bool preTranslateMessage(MSG& msg) override;
    // Called while the queue is empty, `count` counting up from 0; true asks for another call. The
    // default brings the main frame's bars up to date at the first call.
    virtual bool onIdle(long count);
    // The show command given to winMain (SW_SHOWNORMAL by default).
    int showCommand() const
    {
        return showCommand_;
    }

    void addModelessDialog(HWND dialog) override;
    void removeModelessDialog(HWND dialog) override;

    // Installs the translation of every framework text (identity until installed).
    static void setTranslator(winText::Translator translator);
    // The translation of `english`.
    static std::wstring translate(const std::wstring& english);

    // The application's name (string AFX_IDS_APP_TITLE by default).
    std::wstring appName() const override;
    void setAppName(const std::wstring& name);
    // Settings live under HKEY_CURRENT_USER\Software\<company>\<appName>.
    void setRegistryKey(const std::wstring& company);
    std::wstring profileKey() const override;
    // Creates the recent-file list with `maxRecentFiles` entries and reads it from the settings key.
    void loadStdProfileSettings(size_t maxRecentFiles = 4);
    // The recent-file list; null before loadStdProfileSettings.
    winRecentFiles* recentFiles() const override
    {
        return recentFiles_.get();
    }
    // Writes the list to the registry too.
    void addToRecentFileList(const std::wstring& path) override;

    // The document template (the application owns it; one only), handed this application's services.
    void addDocTemplate(std::unique_ptr<winDocTemplate> docTemplate);
    winDocTemplate* docTemplate() const
    {
        return template_.get();
    }
    // The template's frame; null before the first document.
    winFrame* mainFrame() const;
    // The template's document; null before the first document.
    winDocument* document() const;

    // Fills `info` from this process's command line.
    void parseCommandLine(winCommandLineInfo& info);
    // Makes the new or opened document the command line asks for; false when that failed.
    bool processShellCommand(const winCommandLineInfo& info);
    // Opens `path` through the template.
    winDocument* openDocumentFile(const std::wstring& path) override;

    winPrinter& printer() override
    {
        return printer_;
    }

    // New, Open, Print Setup, Exit and the recent files.
    bool onCommand(unsigned id) override;
    bool onUpdateCommand(unsigned id, winCommandState& state) override;
    // The File menu's commands; tests and subclasses call them directly.
    virtual void onFileNew();
    virtual void onFileOpen();
    bool onFilePrintSetup() override;
    // Opens recent entry `index`; a vanished file is removed from the list with a message.
    virtual void openRecentFile(size_t index);

    // Tests override these two to answer.
    int messageBox(const std::wstring& text, UINT type, HWND owner = nullptr) override;
    bool promptFileName(bool open, std::wstring& path) override;

private:
    static winCommandTable<winApp> commands();

    int showCommand_ = SW_SHOWNORMAL;
    int exitCode_ = 0;
    std::wstring appName_;
    std::wstring company_;
    std::vector<HWND> modeless_;
    std::unique_ptr<winRecentFiles> recentFiles_;
    std::unique_ptr<winDocTemplate> template_;
    winPrinter printer_;
};
