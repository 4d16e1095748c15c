// Entry point of quillon.exe, a GUI-subsystem program that also answers on the console: a command-line
// run writes to the console it was started from, or to wherever standard output was redirected.
#include <windows.h>

#include <cstdio>
#include <iostream>

#include "app/qwzCQuillonApp.h"

namespace
{

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

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int showCommand)
{
    connectStandardOutput();
    return qwzCQuillonApp::run(showCommand);
}
