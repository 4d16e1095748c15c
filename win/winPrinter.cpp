// The session's printer. The dialogs may free the blocks they are given and hand back new ones, so the
// blocks are always taken back from the dialog's answer, whatever it was.
#include "win/winPrinter.h"

#include <winspool.h>

namespace
{

// A global block locked for the life of the view.
template <class T> class Locked
{
public:
    explicit Locked(HGLOBAL block) : block_(block), data_(block ? static_cast<T*>(GlobalLock(block)) : nullptr) {}
    ~Locked()
    {
        if (data_)
            GlobalUnlock(block_);
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    const T* get() const
    {
        return data_;
    }

private:
    HGLOBAL block_;
    T* data_;
};

// One of a DEVNAMES block's strings; null without a block.
const wchar_t* devName(const DEVNAMES* names, WORD DEVNAMES::*offset)
{
    return names ? reinterpret_cast<const wchar_t*>(names) + names->*offset : nullptr;
}

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
    job.dc.reset(dialog.hDC);
    job.selection = (dialog.Flags & PD_SELECTION) != 0;
    job.fromPage = 1;
    job.toPage = 0xFFFF;
    if (dialog.Flags & PD_PAGENUMS) {
        job.fromPage = dialog.nFromPage;
        job.toPage = dialog.nToPage;
    }
    return job.dc ? Answer::Ok : Answer::Failed;
}

winOwnedDC winPrinter::createDC()
{
    if (!loadDefault())
        return nullptr;
    Locked<DEVNAMES> names(devNames_);
    Locked<DEVMODEW> mode(devMode_);
    const wchar_t* device = devName(names.get(), &DEVNAMES::wDeviceOffset);
    if (!device)
        return nullptr;
    return winOwnedDC(CreateDCW(devName(names.get(), &DEVNAMES::wDriverOffset), device, nullptr, mode.get()));
}

std::wstring winPrinter::name()
{
    if (!loadDefault())
        return {};
    Locked<DEVNAMES> names(devNames_);
    const wchar_t* device = devName(names.get(), &DEVNAMES::wDeviceOffset);
    return device ? device : L"";
}
