// The frame: a window procedure that only dispatches, the routing of commands and menu states, the
// close prompt and dropped files.
#include "win/winFrame.h"

#include "win/winApp.h"
#include "win/winControl.h"
#include "win/winDocument.h"
#include "win/winEditView.h"
#include "win/winRecentFiles.h"

namespace
{

bool hasResource(unsigned id, LPCWSTR type)
{
    return FindResourceW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), type) != nullptr;
}

} // namespace

const wchar_t* winFrame::className() const
{
    return L"winFrame";
}

void winFrame::PreRegisterClass(WNDCLASSEXW& wc)
{
    HINSTANCE instance = GetModuleHandleW(nullptr);
    if (hasResource(resourceId_, RT_GROUP_ICON))
        wc.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(resourceId_));
    else
        wc.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
}

bool winFrame::create(unsigned resourceId, winDocument& document, winEditView& view)
{
    resourceId_ = resourceId;
    document_ = &document;
    view_ = &view;
    HINSTANCE instance = GetModuleHandleW(nullptr);
    HMENU menu = hasResource(resourceId, RT_MENU) ? LoadMenuW(instance, MAKEINTRESOURCEW(resourceId)) : nullptr;
    if (hasResource(resourceId, RT_ACCELERATOR))
        accelerators_ = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(resourceId));
    if (!createWindow(0, appTitle_, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                      CW_USEDEFAULT, nullptr, menu)) {
        // a window that was never made does not own its menu
        if (menu && !IsMenu(menu))
            menu = nullptr;
        if (menu)
            DestroyMenu(menu);
        return false;
    }
    return true;
}

LRESULT winFrame::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_CREATE:
        return OnCreate(*reinterpret_cast<CREATESTRUCTW*>(lParam)) ? 0 : -1;
    case WM_SIZE:
        OnSize();
        return 0;
    case WM_SETFOCUS:
        OnSetFocus();
        return 0;
    case WM_COMMAND:
        if (OnCommand(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam)))
            return 0;
        break;
    case WM_INITMENUPOPUP:
        if (!HIWORD(lParam))
            OnInitMenuPopup(reinterpret_cast<HMENU>(wParam));
        return 0;
    case WM_NOTIFY: {
        LRESULT result = 0;
        if (winControl::reflectNotify(lParam, result))
            return result;
        break;
    }
    case WM_DROPFILES:
        OnDropFiles(reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_CLOSE:
        OnClose();
        return 0;
    case WM_QUERYENDSESSION:
        return OnQueryEndSession() ? TRUE : FALSE;
    case WM_DESTROY:
        OnDestroy();
        return 0;
    default:
        if (msg == winEditView::findMessage() && view_ && lParam) {
            view_->OnFindMessage(*reinterpret_cast<const FINDREPLACEW*>(lParam));
            return 0;
        }
        break;
    }
    return winWindow::HandleMessage(msg, wParam, lParam);
}

bool winFrame::OnCreate(const CREATESTRUCTW&)
{
    return view_ && view_->create(hwnd());
}

void winFrame::layoutBars(RECT&) {}

void winFrame::recalcLayout()
{
    RECT client = {};
    GetClientRect(hwnd(), &client);
    layoutBars(client);
    HWND pane = overlay_ ? overlay_ : (view_ ? view_->hwnd() : nullptr);
    if (pane)
        MoveWindow(pane, client.left, client.top, client.right - client.left, client.bottom - client.top, TRUE);
}

void winFrame::setViewOverlay(HWND overlay, winCommandTarget* target)
{
    overlay_ = overlay;
    overlayTarget_ = overlay ? target : nullptr;
    HWND view = view_ ? view_->hwnd() : nullptr;
    if (view)
        ShowWindow(view, overlay ? SW_HIDE : SW_SHOW);
    recalcLayout();
    if (overlay)
        ShowWindow(overlay, SW_SHOW);
    if (HWND focus = overlay ? overlay : view)
        SetFocus(focus);
}

void winFrame::OnSize()
{
    recalcLayout();
}

void winFrame::OnSetFocus()
{
    if (overlay_)
        SetFocus(overlay_);
    else if (view_ && view_->hwnd())
        SetFocus(view_->hwnd());
}

void winFrame::OnClose()
{
    if (document_ && !document_->saveModified())
        return;
    DestroyWindow(hwnd());
}

bool winFrame::OnQueryEndSession()
{
    return !document_ || document_->saveModified();
}

void winFrame::acceptDroppedFiles(bool accept)
{
    DragAcceptFiles(hwnd(), accept ? TRUE : FALSE);
}

void winFrame::OnDestroy()
{
    winApp* app = winApp::instance();
    if (app && app->mainFrame() == this)
        PostQuitMessage(0);
}

void winFrame::setAppTitle(const std::wstring& title)
{
    appTitle_ = title;
    updateTitle();
}

void winFrame::updateTitle()
{
    if (!hwnd())
        return;
    std::wstring caption = appTitle_;
    if (document_ && !document_->title().empty())
        caption = appTitle_.empty() ? document_->title() : document_->title() + L" - " + appTitle_;
    SetWindowTextW(hwnd(), caption.c_str());
}

std::wstring winFrame::messageText() const
{
    return messageText_;
}

void winFrame::setMessageText(const std::wstring& text)
{
    messageText_ = text;
}

void winFrame::replaceMenu(HMENU menu)
{
    HMENU old = GetMenu(hwnd());
    SetMenu(hwnd(), menu);
    if (old && old != menu)
        DestroyMenu(old);
    DrawMenuBar(hwnd());
}

bool winFrame::routeCommand(unsigned id)
{
    if (onCommand(id))
        return true;
    // while an overlay shows, it answers for the hidden view
    winCommandTarget* pane = overlayTarget_ ? overlayTarget_ : view_;
    if (pane && pane->onCommand(id))
        return true;
    if (document_ && document_->onCommand(id))
        return true;
    winApp* app = winApp::instance();
    return app && app->onCommand(id);
}

bool winFrame::routeUpdateCommand(unsigned id, winCommandState& state)
{
    if (onUpdateCommand(id, state))
        return true;
    winCommandTarget* pane = overlayTarget_ ? overlayTarget_ : view_;
    if (pane && pane->onUpdateCommand(id, state))
        return true;
    if (document_ && document_->onUpdateCommand(id, state))
        return true;
    winApp* app = winApp::instance();
    return app && app->onUpdateCommand(id, state);
}

bool winFrame::OnCommand(unsigned id, unsigned code, HWND control)
{
    if (control) {
        // a notification from a child control, not a command
        if (view_ && control == view_->hwnd())
            view_->OnControlNotify(code);
        return true;
    }
    return routeCommand(id);
}

void winFrame::OnInitMenuPopup(HMENU popup)
{
    winApp* app = winApp::instance();
    if (app && app->recentFiles())
        app->recentFiles()->updateMenu(popup);
    int count = GetMenuItemCount(popup);
    for (int i = 0; i < count; ++i) {
        UINT id = GetMenuItemID(popup, i);
        if (id == 0 || id == UINT(-1))
            continue; // separator or submenu
        winCommandState state;
        state.enabled = !(GetMenuState(popup, UINT(i), MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED));
        if (!routeUpdateCommand(id, state))
            continue;
        EnableMenuItem(popup, UINT(i), MF_BYPOSITION | (state.enabled ? MF_ENABLED : MF_GRAYED));
        CheckMenuItem(popup, UINT(i), MF_BYPOSITION | (state.checked ? MF_CHECKED : MF_UNCHECKED));
    }
}

void winFrame::openDroppedFiles(HDROP drop)
{
    UINT length = DragQueryFileW(drop, 0, nullptr, 0);
    std::wstring path;
    if (length != 0 && length != UINT(-1)) {
        path.assign(length + 1, L'\0');
        path.resize(DragQueryFileW(drop, 0, path.data(), length + 1));
    }
    DragFinish(drop);
    if (path.empty())
        return;
    // the overlay shows the document that is about to be replaced
    if (overlay_)
        SendMessageW(overlay_, WM_CLOSE, 0, 0);
    SetForegroundWindow(hwnd());
    if (winApp* app = winApp::instance())
        app->openDocumentFile(path);
}

void winFrame::OnDropFiles(HDROP drop)
{
    openDroppedFiles(drop);
}
