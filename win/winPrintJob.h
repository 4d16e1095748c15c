// One print job: StartDoc, the pages asked for, EndDoc, with a progress window ("Page 3 of 12") that
// answers while the spooler takes a page (the abort procedure) and whose Cancel stops the job before the
// next page. A cancelled or failed job ends with AbortDoc, so the printer never gets half a document as
// if it were whole; a failure is told to the user in one message.
#pragma once

#include <windows.h>

#include <string>

class winPrintable;
class winServices;

class winPrintJob
{
public:
    enum class Result { Printed, Cancelled, Failed, NothingToPrint };

    // Prints pages [fromPage, toPage] (1-based, cut to the pages there are) of `printable` on `printer`,
    // named `title` in the printer's queue. `owner` is disabled while the job runs. A failure is told
    // through `services` (the system's message box without them).
    static Result run(HDC printer, const std::wstring& printerName, winPrintable& printable, const std::wstring& title,
                      unsigned fromPage, unsigned toPage, HWND owner, winServices* services);

    // The progress window of the running job; null when none runs.
    static HWND progressWindow();
};
