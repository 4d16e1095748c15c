// The HTML Help viewer, reached through hhctrl.ocx: the library is loaded on first use and its entry point
// looked up once, for the life of the process.
#pragma once

#include <windows.h>

#include <string>

namespace winHtmlHelp
{

// Opens compiled help file `file` at its default topic in a viewer window that no window owns; the
// viewer's window, or null when the library, its entry point or the file could not be opened.
HWND displayTopic(const std::wstring& file);

} // namespace winHtmlHelp
