// Entry point of quillon.exe, a GUI-subsystem program that also answers on the console: a command-line
// run writes to the console it was started from, or to wherever standard output was redirected.
#include <windows.h>

#include <ole2.h>
#include <shellapi.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "app/qwzAppCatalog.h"
#include "app/qwzStartup.h"
#include "foundation/utTextConversion.h"
#include "platform/platform.h"
#include "resourceIds.h"

namespace {

bool usable(HANDLE h)
{
    return h && h != INVALID_HANDLE_VALUE && GetFileType(h) != FILE_TYPE_UNKNOWN;
}

// A GUI program gets no console of its own. Keep a redirected standard output; otherwise borrow the
// console of the process that started us, if there is one.
void connectStandardOutput()
{
    if (usable(GetStdHandle(STD_OUTPUT_HANDLE)))
        return;
    if (!AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    FILE* ignored = nullptr;
    freopen_s(&ignored, "CONOUT$", "w", stdout);
    freopen_s(&ignored, "CONOUT$", "w", stderr);
    std::cout.clear();
    std::cerr.clear();
}

std::vector<std::string> commandWords()
{
    std::vector<std::string> words;
    int count = 0;
    LPWSTR* argv = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!argv)
        return words;
    for (int i = 1; i < count; ++i)
        words.push_back(utUtf16ToUtf8(reinterpret_cast<const char16_t*>(argv[i])).str());
    LocalFree(argv);
    return words;
}

struct OleSession {
    bool ok = SUCCEEDED(OleInitialize(nullptr));
    ~OleSession()
    {
        if (ok)
            OleUninitialize();
    }
};

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    connectStandardOutput();

    OleSession ole;
    if (!ole.ok) {
        platform::messageBox(translate(platform::loadString(IDP_OLE_INIT_FAILED).c_str()).str(), "Quillon",
                             platform::BoxIcon::None);
        return 0;
    }

    int exitCode = 0;
    qwzStartup startup;
    if (startup.run(commandWords(), exitCode) == qwzStartup::Quit)
        return exitCode;
    return 0;
}
