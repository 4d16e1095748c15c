// The session's printer: the choice made in Print Setup or the Print dialog (printer, paper, orientation),
// kept as the dialogs hand it over; the system's default printer until the user chooses. Owns the two
// global blocks that describe it.
#pragma once

#include "win/winHandles.h"

#include <windows.h>

#include <commdlg.h>

#include <string>

class winPrinter
{
public:
    // What the Print dialog answered.
    struct Job {
        winOwnedDC dc;
        bool selection = false;
        unsigned fromPage = 1, toPage = 0xFFFF; // 1-based, inclusive
    };
    enum class Answer { Ok, Cancelled, Failed };

    winPrinter() = default;
    winPrinter(const winPrinter&) = delete;
    winPrinter& operator=(const winPrinter&) = delete;
    ~winPrinter();

    // True when at least one printer is installed.
    static bool installed();

    // Print Setup: the user chooses printer, paper and orientation for the session.
    Answer setup(HWND owner);
    // The Print dialog: printer, copies, and all pages, a page range or (when `canSelect`) the selection.
    Answer printDialog(HWND owner, bool canSelect, Job& job);
    // A device context for the session's printer; null when there is none or it cannot be opened.
    winOwnedDC createDC();
    // The session's printer's name; empty when there is none.
    std::wstring name();

private:
    // Runs the dialog with the session's blocks and keeps the blocks it hands back.
    Answer run(PRINTDLGW& dialog);
    bool loadDefault();

    HGLOBAL devMode_ = nullptr;
    HGLOBAL devNames_ = nullptr;
};
