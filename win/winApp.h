// The application object: start-up and shut-down hooks, the message loop (modeless dialogs, the frame's
// accelerators, idle time), the document template, the settings key and recent-file list, the
// application's commands (New, Open, Exit, recent files, Print Setup), the session's printer and the seams through
// which every message box and file dialog of the framework passes. One per process.
#pragma once

#include "win/winCommandTarget.h"
#include "win/winPrinter.h"
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

class winApp : public winCommandTarget
{
public:
    winApp();
    winApp(const winApp&) = delete;
    winApp& operator=(const winApp&) = delete;
    ~winApp() override;

    // The application object of the process; null when none exists.
    static winApp* instance();

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
    // Offers `msg` to the modeless dialogs and the frame's accelerators; true when consumed.
    virtual bool preTranslateMessage(MSG& msg);
    // Called while the queue is empty, `count` counting up from 0; true asks for another call. The
    // default brings the main frame's bars up to date at the first call.
    virtual bool onIdle(long count);
    // The show command given to winMain (SW_SHOWNORMAL by default).
    int showCommand() const
    {
        return showCommand_;
    }

    // Dialogs whose keyboard messages must go through IsDialogMessage (the Find dialog).
    void addModelessDialog(HWND dialog);
    void removeModelessDialog(HWND dialog);

    // Installs the translation of every framework text (identity until installed).
    static void setTranslator(winText::Translator translator);
    // The translation of `english`.
    static std::wstring translate(const std::wstring& english);

    // The application's name (string 57344 by default); names its settings key and message boxes.
    std::wstring appName() const;
    void setAppName(const std::wstring& name);
    // Settings live under HKEY_CURRENT_USER\Software\<company>\<appName>.
    void setRegistryKey(const std::wstring& company);
    std::wstring profileKey() const;
    // Creates the recent-file list with `maxRecentFiles` entries and reads it from the settings key.
    void loadStdProfileSettings(size_t maxRecentFiles = 4);
    // The recent-file list; null before loadStdProfileSettings.
    winRecentFiles* recentFiles() const
    {
        return recentFiles_.get();
    }
    // Puts `path` first in the recent-file list and writes the list to the registry.
    virtual void addToRecentFileList(const std::wstring& path);

    // The document template (the application owns it; one only).
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
    // Opens `path` (after the save prompt) through the template; null when cancelled or failed.
    virtual winDocument* openDocumentFile(const std::wstring& path);

    // The printer of the session, which Print Setup chooses.
    winPrinter& printer()
    {
        return printer_;
    }

    // New 57600, Open 57601, Print Setup 57606, Exit 57665, recent files 57616..57631.
    bool onCommand(unsigned id) override;
    bool onUpdateCommand(unsigned id, winCommandState& state) override;
    // The File menu's commands; tests and subclasses call them directly.
    virtual void onFileNew();
    virtual void onFileOpen();
    // Print Setup; true when the user chose (tells the user when no printer is installed).
    bool onFilePrintSetup();
    // Opens recent entry `index`; a vanished file is removed from the list with a message.
    virtual void openRecentFile(size_t index);

    // Every message box of the framework: `type` as for MessageBoxW, owner the main frame when null,
    // caption the application's name. Returns the button chosen. Tests override it to answer.
    virtual int messageBox(const std::wstring& text, UINT type, HWND owner = nullptr);
    // The common Open (open true) or Save As dialog for any file type; `path` is the proposal and the
    // answer. False when cancelled. Tests override it.
    virtual bool promptFileName(bool open, std::wstring& path);

private:
    int showCommand_ = SW_SHOWNORMAL;
    int exitCode_ = 0;
    std::wstring appName_;
    std::wstring company_;
    std::vector<HWND> modeless_;
    std::unique_ptr<winRecentFiles> recentFiles_;
    std::unique_ptr<winDocTemplate> template_;
    winPrinter printer_;
};
