// The window base: the object travels to the window through lpCreateParams and lives in GWLP_USERDATA;
// the window procedure only finds the object and calls its HandleMessage. A destroyed object never
// receives another message.
#pragma once

#include <windows.h>

#include <string>

class winWindow
{
public:
    winWindow() = default;
    winWindow(const winWindow&) = delete;
    winWindow& operator=(const winWindow&) = delete;
    // Destroys the window if it still exists.
    virtual ~winWindow();

    // The window handle; null before creation and after WM_NCDESTROY.
    HWND hwnd() const
    {
        return hwnd_;
    }

protected:
    // Registers this class's window class (once) and creates the window; false on failure.
    bool createWindow(DWORD exStyle, const std::wstring& title, DWORD style, int x, int y, int width, int height,
                      HWND parent, HMENU menu);

    // The window class name of this C++ class; each subclass that changes the class returns its own.
    virtual const wchar_t* className() const;

    // Lets a subclass set the icon, cursor or background before the class is registered.
    virtual void PreRegisterClass(WNDCLASSEXW& wc);

    // Handles one message; the default passes it to DefWindowProcW.
    virtual LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

    HWND hwnd_ = nullptr;
};
