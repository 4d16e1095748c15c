// The frame: a window procedure that only dispatches, the routing of commands and menu states, the
// close prompt and dropped files.
#include "win/winFrame.h"

#include "win/winControl.h"
#include "win/winDocument.h"
#include "win/winEditView.h"
#include "win/winHandles.h"
#include "win/winRecentFiles.h"
#include "win/winServices.h"
#include "win/winStatusBar.h"
#include "win/winText.h"
#include "win/winToolBar.h"
#include "win/winToolTip.h"

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

bool winFrame::create(unsigned resourceId, winDocument& document, winEditView& view, winServices* services)
{
    resourceId_ = resourceId;
    document_ = &document;
    view_ = &view;
    services_ = services;
    HINSTANCE instance = GetModuleHandleW(nullptr);
    winMenu menu(loadMenu(resourceId));
    if (hasResource(resourceId, RT_ACCELERATOR))
        accelerators_ = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(resourceId));
    bool created = createWindow(0, appTitle_, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                                CW_USEDEFAULT, CW_USEDEFAULT, nullptr, menu.get());
    // a window that was made owns its menu, and one destroyed during creation took it along
    if (created || !IsMenu(menu.get()))
        menu.release();
    return created;
}

LRESULT winFrame::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_CREATE:
        return OnCreateFrame(*reinterpret_cast<CREATESTRUCTW*>(lParam)) ? 0 : -1;
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
        if (lParam && OnNotify(*reinterpret_cast<NMHDR*>(lParam), result))
            return result;
        if (winControl::reflectNotify(lParam, result))
            return result;
        break;
    }
    case WM_MENUSELECT:
        OnMenuSelect(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HMENU>(lParam));
        return 0;
    case WM_DPICHANGED:
        OnDpiChanged(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
        return 0;
    case WM_DROPFILES:
        OnDropFiles(reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_CLOSE:
        OnClose();
        return 0;
    case WM_ACTIVATE:
        OnActivate(LOWORD(wParam));
        break;
    case WM_SETCURSOR:
        if (OnSetCursor(LOWORD(lParam)))
            return TRUE;
        break;
    case WM_QUERYENDSESSION:
        return OnQueryEndSession(lParam) ? TRUE : FALSE;
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

bool winFrame::OnCreateFrame(const CREATESTRUCTW& cs)
{
    pane_.setMessage(winText::load(AFX_IDS_IDLEMESSAGE));
    if (!OnCreate(cs))
        return false;
    // the bars as the user left them, and their states from the start
    if (services_)
        bars_.load(services_->profileKey());
    onIdleUpdate();
    return true;
}

HMENU winFrame::loadMenu(unsigned resourceId)
{
    return hasResource(resourceId, RT_MENU) ? LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resourceId))
                                            : nullptr;
}

bool winFrame::OnCreate(const CREATESTRUCTW&)
{
    return view_ && view_->create(*this);
}

void winFrame::setBars(winToolBar* toolBar, winStatusBar* statusBar)
{
    bars_.set(toolBar, statusBar);
    if (toolBar)
        toolBar->onDocked = [this](winToolBar::Side) {
            recalcLayout();
            saveBarState();
        };
    pane_.setBar(statusBar);
    setMessageText(pane_.message());
}

void winFrame::layoutBars(RECT& client)
{
    bars_.layout(client);
}

bool winFrame::barVisible(unsigned barId) const
{
    return bars_.visible(barId);
}

void winFrame::showBar(unsigned barId, bool show)
{
    if (!bars_.show(barId, show))
        return;
    recalcLayout();
    saveBarState();
}

void winFrame::saveBarState() const
{
    if (services_)
        bars_.save(services_->profileKey());
}

std::wstring winFrame::commandString(unsigned id) const
{
    return winText::load(id);
}

void winFrame::GetMessageString(unsigned id, std::wstring& text) const
{
    std::wstring whole = commandString(id);
    text = whole.substr(0, whole.find(L'\n'));
}

std::wstring winFrame::tooltipText(unsigned id) const
{
    std::wstring whole = commandString(id);
    size_t cut = whole.find(L'\n');
    return cut == std::wstring::npos ? whole : whole.substr(cut + 1);
}

void winFrame::onIdleUpdate()
{
    if (winToolBar* bar = bars_.toolBar(); bar && bars_.visible(toolBarId))
        bar->updateButtons([this](unsigned id, bool& enabled, bool& checked) {
            winCommandState state{enabled, checked};
            if (!routeUpdateCommand(id, state))
                state = {false, false};
            enabled = state.enabled;
            checked = state.checked;
        });
    if (winStatusBar* bar = bars_.statusBar(); bar && bars_.visible(statusBarId))
        bar->updateKeyIndicators();
}

winCommandTable<winFrame> winFrame::commands()
{
    static const auto toggleBar = [](winFrame& frame, unsigned id) {
        if (!(id == toolBarId && frame.overlay_))
            frame.showBar(id, !frame.barVisible(id));
    };
    static const auto barState = [](winFrame& frame, unsigned id, winCommandState& state) {
        state.enabled = !(id == toolBarId && frame.overlay_);
        state.checked = frame.bars_.chosen(id);
    };
    // one pane only: the focus stays in the text (or in the preview that shows in its place)
    static const auto focusPane = [](winFrame& frame, unsigned) { frame.OnSetFocus(); };
    static const winCommand<winFrame> table[] = {
        {ID_VIEW_TOOLBAR, toggleBar, barState},
        {ID_VIEW_STATUS_BAR, toggleBar, barState},
        {ID_NEXT_PANE, focusPane},
        {ID_PREV_PANE, focusPane},
    };
    return table;
}

bool winFrame::onCommand(unsigned id)
{
    // a bar the frame was not given is no command of its
    if ((id == toolBarId || id == statusBarId) && !bars_.window(id))
        return false;
    return winRunCommand(commands(), *this, id);
}

bool winFrame::onUpdateCommand(unsigned id, winCommandState& state)
{
    if ((id == toolBarId || id == statusBarId) && !bars_.window(id))
        return false;
    return winUpdateCommand(commands(), *this, id, state);
}

void winFrame::showPrompt(unsigned id)
{
    std::wstring prompt;
    if (id)
        GetMessageString(id, prompt);
    pane_.showPrompt(prompt);
}

void winFrame::OnMenuSelect(unsigned item, unsigned flags, HMENU menu)
{
    if (flags == 0xFFFF && !menu) {
        pane_.endPrompt(); // the menu closed
        return;
    }
    // popups, separators and the system menu have no prompt
    bool command = !(flags & (MF_POPUP | MF_SEPARATOR | MF_SYSMENU));
    showPrompt(command ? item : 0);
}

bool winFrame::OnNotify(NMHDR& header, LRESULT& result)
{
    switch (header.code) {
    case TTN_GETDISPINFOA:
    case TTN_GETDISPINFOW:
        OnToolTipText(header);
        result = 0;
        return true;
    case TBN_HOTITEMCHANGE: {
        if (!bars_.toolBar() || header.hwndFrom != bars_.toolBar()->hwnd())
            return false;
        const auto& hot = reinterpret_cast<const NMTBHOTITEM&>(header);
        if (hot.dwFlags & HICF_LEAVING)
            pane_.endPrompt();
        else
            showPrompt(unsigned(hot.idNew));
        result = 0;
        return true;
    }
    default:
        return false;
    }
}

void winFrame::OnDpiChanged(UINT, const RECT& suggested)
{
    SetWindowPos(hwnd(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    recalcLayout();
}

void winFrame::OnToolTipText(NMHDR& header)
{
    winToolTip::answer(header, [this](unsigned id) { return tooltipText(id); });
}

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
    bars_.stepAside(overlay != nullptr);
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

void winFrame::OnActivate(unsigned) {}

void winFrame::setBackgroundWork(bool working)
{
    if (backgroundWork_ == working)
        return;
    backgroundWork_ = working;
    // the pointer changes now, not at the next move of the mouse: a move where it is asks again
    POINT at;
    if (!hwnd() || !GetCursorPos(&at))
        return;
    HWND under = WindowFromPoint(at);
    if (under == hwnd() || IsChild(hwnd(), under))
        SetCursorPos(at.x, at.y);
}

bool winFrame::OnSetCursor(unsigned hitTest)
{
    // the client area only: borders keep their sizing pointers
    if (!backgroundWork_ || hitTest != HTCLIENT)
        return false;
    SetCursor(LoadCursorW(nullptr, IDC_APPSTARTING));
    return true;
}

bool winFrame::OnQueryEndSession(LPARAM)
{
    return !document_ || document_->saveModified();
}

void winFrame::acceptDroppedFiles(bool accept)
{
    DragAcceptFiles(hwnd(), accept ? TRUE : FALSE);
}

void winFrame::OnDestroy()
{
    // the frame the application's template made is the main one: the program ends with it
    if (services_)
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

std::wstring winFrame::documentTitle() const
{
    return document_ ? document_->title() : std::wstring();
}

std::wstring winFrame::messageText() const
{
    return pane_.message();
}

void winFrame::setMessageText(const std::wstring& text)
{
    pane_.setMessage(text);
}

void winFrame::replaceMenu(HMENU menu)
{
    {
        winMenu old(GetMenu(hwnd()));
        SetMenu(hwnd(), menu);
        // the same menu given again stays
        if (old.get() == menu)
            old.release();
    }
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
    return services_ && services_->onCommand(id);
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
    return services_ && services_->onUpdateCommand(id, state);
}

bool winFrame::OnCommand(unsigned id, unsigned code, HWND control)
{
    if (control && view_ && control == view_->hwnd()) {
        // a notification from the text, not a command
        OnViewNotify(code);
        return true;
    }
    // a menu item, an accelerator, or a button of a bar (BN_CLICKED)
    if (control && code != BN_CLICKED)
        return true;
    return routeCommand(id);
}

void winFrame::OnViewNotify(unsigned code)
{
    if (code == EN_CHANGE && document_)
        document_->onTextChanged();
}

void winFrame::OnInitMenuPopup(HMENU popup)
{
    if (services_ && services_->recentFiles())
        services_->recentFiles()->updateMenu(popup);
    int count = GetMenuItemCount(popup);
    for (int i = 0; i < count; ++i) {
        UINT id = GetMenuItemID(popup, i);
        if (id == 0 || id == UINT(-1))
            continue; // separator or submenu
        winCommandState state;
        if (!routeUpdateCommand(id, state))
            state = {false, false}; // nothing handles it

        EnableMenuItem(popup, UINT(i), MF_BYPOSITION | (state.enabled ? MF_ENABLED : MF_GRAYED));
        CheckMenuItem(popup, UINT(i), MF_BYPOSITION | (state.checked ? MF_CHECKED : MF_UNCHECKED));
    }
}

void winFrame::openDroppedFiles(HDROP drop)
{
    std::wstring path;
    {
        winDrop owned(drop);
        UINT length = DragQueryFileW(drop, 0, nullptr, 0);
        if (length != 0 && length != UINT(-1)) {
            path.assign(length + 1, L'\0');
            path.resize(DragQueryFileW(drop, 0, path.data(), length + 1));
        }
    }
    if (path.empty())
        return;
    // the overlay shows the document that is about to be replaced
    if (overlay_)
        SendMessageW(overlay_, WM_CLOSE, 0, 0);
    SetForegroundWindow(hwnd());
    if (services_)
        services_->openDocumentFile(path);
}

void winFrame::OnDropFiles(HDROP drop)
{
    openDroppedFiles(drop);
}
