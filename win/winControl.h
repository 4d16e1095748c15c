// A system control (EDIT, RICHEDIT, ...) given an object of ours: the control is subclassed with
// SetWindowSubclass and its messages go to HandleMessage; notifications that the control sends its
// parent (WM_NOTIFY) are reflected back to the object by the parent (frame or dialog).
#pragma once

#include <windows.h>

#include <string>

class winControl
{
public:
    winControl() = default;
    winControl(const winControl&) = delete;
    winControl& operator=(const winControl&) = delete;
    // Removes the subclass (the control itself belongs to its parent window).
    virtual ~winControl();

    // Subclasses the existing control `control`; false when it is null or already attached elsewhere.
    bool attach(HWND control);
    // Removes the subclass; the control keeps working as a plain system control.
    void detach();
    // Creates a control of window class `className` as child `id` of `parent`, then attaches to it.
    bool create(const wchar_t* className, DWORD style, DWORD exStyle, const RECT& rect, HWND parent, int id);

    HWND hwnd() const
    {
        return hwnd_;
    }

    // The object attached to `control`; null for a control without one.
    static winControl* fromHandle(HWND control);

    // Offers a parent's WM_NOTIFY to the object of the control that sent it; true when it handled it,
    // `result` then being the answer for the parent to return.
    static bool reflectNotify(LPARAM lParam, LRESULT& result);

protected:
    // One message of the control; the default passes it on to the control's own procedure.
    virtual LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam);
    // A notification the control sent its parent; true when handled (`result` is returned to the control).
    virtual bool OnReflectedNotify(const NMHDR& header, LRESULT& result);

    // The control's own procedure, for messages handled in part.
    LRESULT defaultProc(UINT msg, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK SubclassProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR self);

    HWND hwnd_ = nullptr;
};
