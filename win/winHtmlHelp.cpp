// The HTML Help viewer's one entry point, bound late so that a program that never asks for help never
// loads it.
#include "win/winHtmlHelp.h"

namespace
{

using HtmlHelpProc = HWND(WINAPI*)(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data);
const UINT displayTopicCommand = 0; // HH_DISPLAY_TOPIC

HtmlHelpProc loadEntryPoint()
{
    // kept loaded: the viewer's windows live in it
    HMODULE library = LoadLibraryW(L"hhctrl.ocx");
    return library ? reinterpret_cast<HtmlHelpProc>(reinterpret_cast<void*>(GetProcAddress(library, "HtmlHelpW")))
                   : nullptr;
}

} // namespace

namespace winHtmlHelp
{

HWND displayTopic(const std::wstring& file)
{
    static const HtmlHelpProc proc = loadEntryPoint(); // once, failed or not
    return proc ? proc(nullptr, file.c_str(), displayTopicCommand, 0) : nullptr;
}

} // namespace winHtmlHelp
