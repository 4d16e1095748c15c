// The main frame of a single-document program: menu and accelerators from resource `resourceId`, the
// view filling the client area, command routing (frame -> view -> document -> application), menu item
// states, the save prompt on close and dropped files. Bars (toolbar, status bar) hook in through
// layoutBars without the frame knowing them; print preview takes the view's place as an overlay.
#pragma once

#include "win/winCommandTarget.h"
#include "win/winWindow.h"

#include <shellapi.h>

#include <string>

class winDocument;
class winEditView;

class winFrame : public winWindow, public winCommandTarget
{
public:
    // The placeholder id of the recent-file list in the File menu.
    static constexpr unsigned recentFileFirst = 57616;
    static constexpr unsigned recentFileLast = 57631;

    winFrame() = default;

    // Creates the (hidden) frame with menu and accelerator table `resourceId` when they exist, and the
    // view in it; false when the window or the view could not be made.
    bool create(unsigned resourceId, winDocument& document, winEditView& view);

    winDocument* document() const
    {
        return document_;
    }
    winEditView* activeView() const
    {
        return view_;
    }
    // The accelerator table (null without one); owned by the resources.
    HACCEL accelerators() const
    {
        return accelerators_;
    }
    void setAccelerators(HACCEL table)
    {
        accelerators_ = table;
    }

    // The application part of the caption; "<document title> - <app title>" is shown.
    const std::wstring& appTitle() const
    {
        return appTitle_;
    }
    void setAppTitle(const std::wstring& title);
    // Recomputes the caption from the document's title.
    virtual void updateTitle();

    // Attaches `menu` to the window, destroying the menu it had; the window owns `menu` from now on.
    void replaceMenu(HMENU menu);

    // Routes command `id`: this frame, the active view, the document, then the application.
    bool routeCommand(unsigned id);
    // Routes an update request the same way; true when some target claimed the command.
    bool routeUpdateCommand(unsigned id, winCommandState& state);

    // The text of the status bar's message pane; kept (and returned) by a frame without a status bar too.
    virtual std::wstring messageText() const;
    virtual void setMessageText(const std::wstring& text);

    // Sizes the bars and the view (or the window shown in its place) to the client area.
    void recalcLayout();

    // Shows `overlay` (print preview) in the view's place, the view hidden, and routes the view's share of
    // the commands to `target` instead; null gives the view back, with the focus. Not owned; it is sent
    // WM_CLOSE when a dropped file replaces the document.
    void setViewOverlay(HWND overlay, winCommandTarget* target);
    HWND viewOverlay() const
    {
        return overlay_;
    }

    // Lets the user drop files on the window (DragAcceptFiles).
    void acceptDroppedFiles(bool accept = true);
    // Opens the first file of a drop through the application's open path (with its save prompt); frees
    // the drop.
    void openDroppedFiles(HDROP drop);

protected:
    const wchar_t* className() const override;
    void PreRegisterClass(WNDCLASSEXW& wc) override;
    LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;

    // Creation after the window exists: creates the view. Subclasses add bars here (call the base first).
    // False makes creation fail.
    virtual bool OnCreate(const CREATESTRUCTW& cs);
    // Places bars inside `client` and shrinks it to what is left for the view; the default has no bars.
    virtual void layoutBars(RECT& client);
    // Asks the document to save if modified, then destroys the window.
    virtual void OnClose();
    // Windows is ending the session: true lets it, after the save prompt.
    virtual bool OnQueryEndSession();
    virtual void OnDestroy();
    virtual void OnSize();
    virtual void OnSetFocus();
    // A command or a control notification; true when handled.
    virtual bool OnCommand(unsigned id, unsigned code, HWND control);
    // Sets the enabled/checked states of a popup's items and fills the recent-file list.
    virtual void OnInitMenuPopup(HMENU popup);
    virtual void OnDropFiles(HDROP drop);

private:
    winDocument* document_ = nullptr;
    winEditView* view_ = nullptr;
    HACCEL accelerators_ = nullptr;
    unsigned resourceId_ = 0;
    std::wstring appTitle_;
    std::wstring messageText_;
    HWND overlay_ = nullptr;
    winCommandTarget* overlayTarget_ = nullptr;
};
