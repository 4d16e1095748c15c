// What the framework's windows ask of the application: message boxes, file dialogs, the modeless
// dialogs of the message loop, the settings key and recent-file list, opening a document, the session's
// printer, and the application's own commands at the end of the routing. The application implements it
// and hands it to the template, which hands it on; no class of the framework reaches for a global.
#pragma once

#include "win/winCommandTarget.h"

#include <windows.h>

#include <string>

class winDocument;
class winPrinter;
class winRecentFiles;

class winServices : public winCommandTarget
{
public:
    // Every message box of the framework: `type` as for MessageBoxW, owner the main frame when null,
    // caption the application's name. Returns the button chosen.
    virtual int messageBox(const std::wstring& text, UINT type, HWND owner = nullptr) = 0;
    // The common Open (open true) or Save As dialog for any file type; `path` is the proposal and the
    // answer. False when cancelled.
    virtual bool promptFileName(bool open, std::wstring& path) = 0;

    // Dialogs whose keyboard messages must go through IsDialogMessage (the Find dialog).
    virtual void addModelessDialog(HWND dialog) = 0;
    virtual void removeModelessDialog(HWND dialog) = 0;
    // Offers `msg` to the modeless dialogs and the frame's accelerators; true when consumed.
    virtual bool preTranslateMessage(MSG& msg) = 0;

    // The application's name, which names its settings key, message boxes and print jobs.
    virtual std::wstring appName() const = 0;
    // The settings key under HKEY_CURRENT_USER.
    virtual std::wstring profileKey() const = 0;
    // The recent-file list; null when there is none.
    virtual winRecentFiles* recentFiles() const = 0;
    // Puts `path` first in the recent-file list and keeps the list.
    virtual void addToRecentFileList(const std::wstring& path) = 0;
    // Opens `path` (after the save prompt); null when cancelled or failed.
    virtual winDocument* openDocumentFile(const std::wstring& path) = 0;

    // The printer of the session, which Print Setup chooses.
    virtual winPrinter& printer() = 0;
    // Print Setup; true when the user chose (tells the user when no printer is installed).
    virtual bool onFilePrintSetup() = 0;
};
