// The answer to a tooltip's request for its text: the narrow and the wide request alike, the tool named
// by its id or by its window's control id, the text cut to the request's 80-character buffer between
// characters (and, narrow, in the program's code page).
#pragma once

#include <windows.h>

#include <functional>
#include <string>

class winToolTip
{
public:
    // Fills the TTN_GETDISPINFOA or TTN_GETDISPINFOW request `header` with `tipOf` the tool's command
    // id; a tool without an id gets an empty text.
    static void answer(NMHDR& header, const std::function<std::wstring(unsigned id)>& tipOf);
};
