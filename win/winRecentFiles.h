// The recent-file list: newest first, no duplicates (names compared without case), at most `capacity`
// entries, kept under HKEY_CURRENT_USER\<key>\Recent File List as File1..FileN and shown in the File
// menu in place of the "Recent File" placeholder (ids ID_FILE_MRU_FILE1 and up).
#pragma once

#include "win/winIds.h"

#include <windows.h>

#include <string>
#include <vector>

class winRecentFiles
{
public:
    static constexpr unsigned firstId = ID_FILE_MRU_FILE1;

    // `key` is the application's key below HKEY_CURRENT_USER, e.g. "Software\\Tarvik\\Quillon".
    winRecentFiles(std::wstring key, size_t capacity = 4);

    // Reads the list from the registry (missing values are skipped); the list is replaced.
    void load();
    // Writes the list to the registry, removing values past its end; false when the key can't be written.
    bool save() const;

    // Puts `path` first, removing an earlier entry for it and the oldest past the capacity.
    void add(const std::wstring& path);
    // Removes entry `index` (0 is the newest); out-of-range indexes are ignored.
    void remove(size_t index);

    size_t size() const
    {
        return paths_.size();
    }
    size_t capacity() const
    {
        return capacity_;
    }
    // Entry `index`; empty when out of range.
    std::wstring at(size_t index) const;

    // The registry key that holds the values.
    std::wstring registryKey() const;

    // Rewrites the recent-file items of `menu` (a popup) when it holds the placeholder or earlier entries:
    // one item "&1 <path>" per entry, or the greyed placeholder when the list is empty. Returns false when
    // `menu` has neither.
    bool updateMenu(HMENU menu);

    // The menu text of entry `index` ("&1 C:\\dir\\file.txt", ampersands doubled, long paths shortened).
    std::wstring menuText(size_t index) const;

private:
    std::wstring key_;
    size_t capacity_;
    std::vector<std::wstring> paths_;
    std::wstring placeholder_;
};
