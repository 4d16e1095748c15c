// The session's printer. The dialogs may free the blocks they are given and hand back new ones, so the
// blocks are always taken back from the dialog's answer, whatever it was.
#include "win/winPrinter.h"

#include <winspool.h>

namespace
{

// A locked view of a DEVNAMES block's three strings.
class DevNames
{
public:
    explicit DevNames(HGLOBAL block)
        : block_(block), names_(block ? static_cast<DEVNAMES*>(GlobalLock(block)) : nullptr)
    {
    }
    ~DevNames()
    {
        if (names_)
            GlobalUnlock(block_);
    }
    DevNames(const DevNames&) = delete;
    DevNames& operator=(const DevNames&) = delete;

    const wchar_t* driver() const
    {
        return at(names_ ? names_->wDriverOffset : 0);
    }
    const wchar_t* device() const
    {
        return at(names_ ? names_->wDeviceOffset : 0);
    }

private:
    const wchar_t* at(WORD offset) const
    {
        return names_ ? reinterpret_cast<const wchar_t*>(names_) + offset : nullptr;
    }
    HGLOBAL block_;
    DEVNAMES* names_;
};

// Locks a DEVMODE block for the duration of one call.
class DevMode
{
public:
    explicit DevMode(HGLOBAL block) : block_(block), mode_(block ? static_cast<DEVMODEW*>(GlobalLock(block)) : nullptr)
    {
    }
    ~DevMode()
    {
        if (mode_)
            GlobalUnlock(block_);
    }
    DevMode(const DevMode&) = delete;
    DevMode& operator=(const DevMode&) = delete;
    const DEVMODEW* get() const
    {
        return mode_;
    }

private:
    HGLOBAL block_;
    DEVMODEW* mode_;
};

} // namespace

winPrinter::~winPrinter()
{
    if (devMode_)
        GlobalFree(devMode_);
    if (devNames_)
        GlobalFree(devNames_);
}

bool winPrinter::installed()
{
    DWORD needed = 0, count = 0;
    EnumPrintersW(PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS, nullptr, 4, nullptr, 0, &needed, &count);
    return needed != 0;
}

winPrinter::Answer winPrinter::run(PRINTDLGW& dialog)
{
    dialog.lStructSize = sizeof dialog;
    dialog.hDevMode = devMode_;
    dialog.hDevNames = devNames_;
    BOOL ok = PrintDlgW(&dialog);
    devMode_ = dialog.hDevMode;
    devNames_ = dialog.hDevNames;
    if (ok)
        return Answer::Ok;
    return CommDlgExtendedError() == 0 ? Answer::Cancelled : Answer::Failed;
}

bool winPrinter::loadDefault()
{
    if (devNames_)
        return true;
    PRINTDLGW dialog = {};
    dialog.Flags = PD_RETURNDEFAULT | PD_NOWARNING;
    return run(dialog) == Answer::Ok && devNames_;
}

winPrinter::Answer winPrinter::setup(HWND owner)
{
    PRINTDLGW dialog = {};
    dialog.hwndOwner = owner;
    dialog.Flags = PD_PRINTSETUP | PD_NOWARNING;
    return run(dialog);
}

winPrinter::Answer winPrinter::printDialog(HWND owner, bool canSelect, Job& job)
{
    PRINTDLGW dialog = {};
    dialog.hwndOwner = owner;
    dialog.Flags =
        PD_RETURNDC | PD_USEDEVMODECOPIESANDCOLLATE | PD_NOWARNING | PD_ALLPAGES | (canSelect ? 0 : PD_NOSELECTION);
    // the page count depends on the printer chosen in this very dialog: any range is offered
    dialog.nMinPage = 1;
    dialog.nMaxPage = 0xFFFF;
    dialog.nFromPage = 1;
    dialog.nToPage = 0xFFFF;
    dialog.nCopies = 1;
    Answer answer = run(dialog);
    if (answer != Answer::Ok)
        return answer;
    job.dc = dialog.hDC;
    job.selection = (dialog.Flags & PD_SELECTION) != 0;
    job.fromPage = 1;
    job.toPage = 0xFFFF;
    if (dialog.Flags & PD_PAGENUMS) {
        job.fromPage = dialog.nFromPage;
        job.toPage = dialog.nToPage;
    }
    return job.dc ? Answer::Ok : Answer::Failed;
}

HDC winPrinter::createDC()
{
    if (!loadDefault())
        return nullptr;
    DevNames names(devNames_);
    DevMode mode(devMode_);
    if (!names.device())
        return nullptr;
    return CreateDCW(names.driver(), names.device(), nullptr, mode.get());
}

std::wstring winPrinter::name()
{
    if (!loadDefault())
        return {};
    DevNames names(devNames_);
    return names.device() ? names.device() : L"";
}
