// The main frame of a single-document program: menu and accelerators from resource `resourceId`, the
// view filling the client area, command routing (frame -> view -> document -> application), menu item
// and toolbar button states, the save prompt on close and dropped files. A subclass that makes a toolbar
// and a status bar hands them to the frame, which lays them out, shows and hides them (View menu), keeps
// where they are, shows command prompts and tooltips and keeps the key indicators current. Print preview
// takes the view's place as an overlay.
//
// The greying rule: a command that no target claims in onUpdateCommand is greyed, in the menus and on the
// toolbar, so the user is never offered an item that does nothing.
#pragma once

#include "win/winCommandTarget.h"
#include "win/winWindow.h"

#include <commctrl.h>
#include <shellapi.h>

#include <string>

class winDocument;
class winEditView;
class winStatusBar;
class winToolBar;

class winFrame : public winWindow, public winCommandTarget
{
public:
    // The placeholder id of the recent-file list in the File menu.
    static constexpr unsigned recentFileFirst = 57616;
    static constexpr unsigned recentFileLast = 57631;
    // The bars' control ids, which are also the View menu's commands that show and hide them.
    static constexpr unsigned toolBarId = 59392;
    static constexpr unsigned statusBarId = 59393;
    static constexpr unsigned nextPaneCommand = 59440;
    static constexpr unsigned prevPaneCommand = 59441;
    // The message pane's text while nothing else is shown ("Ready").
    static constexpr unsigned idleMessageId = 57345;

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

    // The text of the status bar's message pane ("Ready" at first); kept (and returned) by a frame without
    // a status bar too. A prompt shown while a menu item or a button is under the pointer does not change it.
    virtual std::wstring messageText() const;
    virtual void setMessageText(const std::wstring& text);

    // While background work goes on (text still arriving), the pointer over the window is the arrow with
    // the busy sign, which says that the window still takes input.
    void setBackgroundWork(bool working);
    bool backgroundWork() const
    {
        return backgroundWork_;
    }

    // The bars; null when the frame has none.
    winToolBar* toolBar() const
    {
        return toolBar_;
    }
    winStatusBar* statusBar() const
    {
        return statusBar_;
    }
    // Shows or hides the bar of `barId` (toolBarId, statusBarId), lays the frame out and keeps the choice.
    void showBar(unsigned barId, bool show);
    bool barVisible(unsigned barId) const;

    // The status-bar prompt of command `id`: its string up to the first "\n" (all of it without one);
    // empty when there is no string.
    void GetMessageString(unsigned id, std::wstring& text) const;
    // The tooltip of command `id`: its string after the first "\n" (all of it without one).
    std::wstring tooltipText(unsigned id) const;
    // The translated string-table text of command `id` that prompt and tooltip are cut from; empty when
    // there is none.
    virtual std::wstring commandString(unsigned id) const;

    // Brings the toolbar's button states and the key indicators up to date; the application calls it
    // whenever it falls idle.
    virtual void onIdleUpdate();

    // Toolbar and Status Bar (View menu), next and previous pane.
    bool onCommand(unsigned id) override;
    bool onUpdateCommand(unsigned id, winCommandState& state) override;

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

    // The menu the window is created with (the window owns it); the default loads menu `resourceId`, null
    // when there is none. A subclass that translates its menu does it here, so that the menu bar is laid
    // out once, at creation.
    virtual HMENU loadMenu(unsigned resourceId);
    // Creation after the window exists: creates the view. Subclasses add bars here (call the base first).
    // False makes creation fail.
    virtual bool OnCreate(const CREATESTRUCTW& cs);
    // Hands the frame its bars (owned by the subclass, either may be null) and shows "Ready"; call from
    // OnCreate once they exist. The saved bar state is applied after OnCreate.
    void setBars(winToolBar* toolBar, winStatusBar* statusBar);
    // Places the bars inside `client` (the status bar outermost) and shrinks it to what is left for the view.
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
    // The pointer over the window; true when set (the busy arrow during background work).
    virtual bool OnSetCursor(unsigned hitTest);
    // A menu item under the pointer or the keyboard: its prompt; the menu closed: the message again.
    virtual void OnMenuSelect(unsigned item, unsigned flags, HMENU menu);
    // A notification from a child; true when handled, `result` then being the answer.
    virtual bool OnNotify(NMHDR& header, LRESULT& result);
    // A tooltip asks for its text (narrow or wide request); fills the request's 80-character buffer.
    virtual void OnToolTipText(NMHDR& header);
    // The window moved to a display of another scale: takes the suggested rectangle and lays out again.
    virtual void OnDpiChanged(UINT dpi, const RECT& suggested);

private:
    // Shows the prompt of `id` (0: an empty prompt) in the message pane until endPrompt.
    void showPrompt(unsigned id);
    void endPrompt();
    // The window of bar `barId`; null when the frame has no such bar.
    HWND barWindow(unsigned barId) const;
    void saveBarState() const;
    void loadBarState();

    winDocument* document_ = nullptr;
    winEditView* view_ = nullptr;
    HACCEL accelerators_ = nullptr;
    unsigned resourceId_ = 0;
    std::wstring appTitle_;
    std::wstring messageText_;
    winToolBar* toolBar_ = nullptr;
    winStatusBar* statusBar_ = nullptr;
    bool prompting_ = false;
    HWND overlay_ = nullptr;
    winCommandTarget* overlayTarget_ = nullptr;
    // the toolbar the user chose to see, stepped aside while an overlay brings its own bar
    bool toolBarHiddenForOverlay_ = false;
    bool backgroundWork_ = false;
};
