// The display's scale, in one place: 96 dots per inch is 100%, and a window whose display the system
// does not report counts as that.
#pragma once

#include <windows.h>

class winDpi
{
public:
    static constexpr UINT standard = 96;

    // The dots per inch of `window`'s display; the standard for a null window or an unknown display.
    static UINT of(HWND window)
    {
        UINT dpi = window ? GetDpiForWindow(window) : 0;
        return dpi ? dpi : standard;
    }

    // `pixels` at 100% scaled to `dpi`.
    static int scale(int pixels, UINT dpi)
    {
        return MulDiv(pixels, int(dpi), int(standard));
    }
};
