// A read-only rich-edit control showing a text with one link written as <a href="target">text</a>: the
// link is blue and underlined, the cursor is a hand over it, and a left click opens its target with the
// shell when it is an http:, https: or mailto: address (anything else is ignored). Only the last anchor is
// tracked; every anchor's text is drawn as a link.
#pragma once

#include <windows.h>

#include <richedit.h>

#include <string>

#include "foundation/utString.h"

class qwzCStaticWithLink
{
public:
    qwzCStaticWithLink();
    qwzCStaticWithLink(const qwzCStaticWithLink&) = delete;
    qwzCStaticWithLink& operator=(const qwzCStaticWithLink&) = delete;
    virtual ~qwzCStaticWithLink();

    // Loads the rich-edit library the control is made of and keeps it to the end of the process, in place
    // of one loaded before; false when the system has none (`name` is the library's; tests change it).
    static bool loadLibrary(const wchar_t* name = L"Msftedit.dll");
    // True while a library loaded by loadLibrary is held.
    static bool libraryLoaded();

    // Takes over an existing rich-edit control (a dialog's); false when it is no window.
    bool attach(HWND control);
    HWND hwnd() const
    {
        return hwnd_;
    }

    // Replaces the content with `text`, parsing its anchors (UTF-8).
    void setText(const utString& text);

    // The parent's WM_NOTIFY: handles the control's link notification; true when it was one.
    bool handleNotify(const NMHDR& header, LRESULT& result);

    const utString& url() const
    {
        return url_;
    }
    // The link's characters in the control, [start, end).
    LONG linkStart() const
    {
        return linkStart_;
    }
    LONG linkEnd() const
    {
        return linkEnd_;
    }
    // The link's rectangle in client coordinates; all 0 without a link.
    const RECT& linkRect() const
    {
        return linkRect_;
    }

protected:
    // Opens `url` with the shell's "open" verb; a failure is not reported.
    virtual void openLink(const utString& url);

private:
    static LRESULT CALLBACK subclassProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR self);
    bool OnSetCursor();
    void insert(const std::wstring& text, LONG& position, bool link);
    void measureLink();
    // The control's characters [start, end).
    std::wstring textRange(LONG start, LONG end) const;

    HWND hwnd_ = nullptr;
    utString url_;
    LONG linkStart_ = 0;
    LONG linkEnd_ = 0;
    RECT linkRect_ = {0, 0, 0, 0};
    HCURSOR arrowCursor_;
    HCURSOR handCursor_;
    CHARFORMAT2W defaultFormat_ = {};
};
