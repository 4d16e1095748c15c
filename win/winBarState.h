// Where the frame's bars are: whether the toolbar and the status bar are shown and on which side the
// toolbar is docked, kept under HKEY_CURRENT_USER\<application key>\Bar State beside the recent files.
#pragma once

#include <string>

struct winBarState {
    // The toolbar's sides, as the registry keeps them.
    enum Side { Top = 0, Bottom = 1, Left = 2, Right = 3 };

    bool toolBarVisible = true;
    Side toolBarSide = Top;
    bool statusBarVisible = true;

    // Reads the state kept under `appKey` (e.g. "Software\\Tarvik\\Quillon"); a missing or malformed value
    // keeps its default.
    static winBarState load(const std::wstring& appKey);
    // Writes it; false when the key can't be written.
    bool save(const std::wstring& appKey) const;
};
