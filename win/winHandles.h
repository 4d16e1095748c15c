// One owner for every handle the system gives out, in the manner of ScopedWin.h: each releases its handle
// once, on every path, with the call that matches how it was got. Owners of handles that are made
// (files, keys, device contexts, GDI objects, image lists) move; owners of handles that are borrowed for a
// scope (GetDC, SelectObject) do not.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <memory>
#include <type_traits>

namespace winRelease
{
struct Handle {
    void operator()(HANDLE h) const
    {
        if (h != INVALID_HANDLE_VALUE)
            CloseHandle(h);
    }
};
struct Key {
    void operator()(HKEY key) const
    {
        RegCloseKey(key);
    }
};
struct DC {
    void operator()(HDC dc) const
    {
        DeleteDC(dc);
    }
};
struct GdiObject {
    void operator()(HGDIOBJ object) const
    {
        DeleteObject(object);
    }
};
struct Drop {
    void operator()(HDROP drop) const
    {
        DragFinish(drop);
    }
};
struct Search {
    void operator()(HANDLE search) const
    {
        if (search != INVALID_HANDLE_VALUE)
            FindClose(search);
    }
};
struct Module {
    void operator()(HMODULE module) const
    {
        FreeLibrary(module);
    }
};
struct Menu {
    void operator()(HMENU menu) const
    {
        DestroyMenu(menu);
    }
};
struct Local {
    void operator()(void* memory) const
    {
        LocalFree(memory);
    }
};
struct ImageList {
    void operator()(HIMAGELIST list) const
    {
        ImageList_Destroy(list);
    }
};
} // namespace winRelease

// A kernel handle (a file): CloseHandle; INVALID_HANDLE_VALUE counts as none.
using winHandle = std::unique_ptr<void, winRelease::Handle>;
// A directory search from FindFirstFile: FindClose; INVALID_HANDLE_VALUE counts as none.
using winFileSearch = std::unique_ptr<void, winRelease::Search>;
// A registry key from RegOpenKeyEx or RegCreateKeyEx: RegCloseKey.
using winRegKey = std::unique_ptr<std::remove_pointer_t<HKEY>, winRelease::Key>;
// A device context from CreateDC, CreateCompatibleDC or the Print dialog, a printer's above all: DeleteDC.
// It moves from the printer to the print job or the preview, whichever keeps it, so one owner deletes it.
using winOwnedDC = std::unique_ptr<std::remove_pointer_t<HDC>, winRelease::DC>;
// A font, bitmap, brush or pen that was created: DeleteObject (deselect it first: see winSelection).
template <class Object> using winGdiObject = std::unique_ptr<std::remove_pointer_t<Object>, winRelease::GdiObject>;
using winFont = winGdiObject<HFONT>;
using winBitmap = winGdiObject<HBITMAP>;
// A library from LoadLibrary: FreeLibrary.
using winModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, winRelease::Module>;
// A menu that no window owns yet: DestroyMenu.
using winMenu = std::unique_ptr<std::remove_pointer_t<HMENU>, winRelease::Menu>;
// Memory that a system call allocated for its caller with LocalAlloc: LocalFree.
template <class T> using winLocal = std::unique_ptr<T, winRelease::Local>;
// A drop of files from the shell (WM_DROPFILES): DragFinish.
using winDrop = std::unique_ptr<std::remove_pointer_t<HDROP>, winRelease::Drop>;
// An image list from ImageList_Create: ImageList_Destroy.
using winImageList = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, winRelease::ImageList>;

// The device context of a window's client area (null: the screen) from GetDC, or of the whole window
// from GetWindowDC, released with ReleaseDC at scope exit.
class winWindowDC
{
public:
    explicit winWindowDC(HWND window, bool wholeWindow = false)
        : window_(window), dc_(wholeWindow ? GetWindowDC(window) : GetDC(window))
    {
    }
    ~winWindowDC()
    {
        if (dc_)
            ReleaseDC(window_, dc_);
    }
    winWindowDC(const winWindowDC&) = delete;
    winWindowDC& operator=(const winWindowDC&) = delete;

    HDC get() const
    {
        return dc_;
    }

private:
    HWND window_;
    HDC dc_;
};

// `object` selected into `dc` for a scope; the object it replaced is selected again at scope exit, so
// that the object can be deleted and the DC released clean. A null object selects nothing.
class winSelection
{
public:
    winSelection(HDC dc, HGDIOBJ object) : dc_(dc), old_(object ? SelectObject(dc, object) : nullptr) {}
    ~winSelection()
    {
        if (old_)
            SelectObject(dc_, old_);
    }
    winSelection(const winSelection&) = delete;
    winSelection& operator=(const winSelection&) = delete;

private:
    HDC dc_;
    HGDIOBJ old_;
};
