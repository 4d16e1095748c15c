// The frame: a window procedure that only dispatches, the routing of commands and menu states, the
// close prompt and dropped files.
#include "win/winFrame.h"

#include "win/winApp.h"
#include "win/winBarState.h"
#include "win/winControl.h"
#include "win/winDocument.h"
#include "win/winEditView.h"
#include "win/winRecentFiles.h"
#include "win/winStatusBar.h"
#include "win/winText.h"
#include "win/winToolBar.h"

namespace
{

bool hasResource(unsigned id, LPCWSTR type)
{
    return FindResourceW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), type) != nullptr;
}

bool shown(HWND window)
{
    // the style, not IsWindowVisible: a bar of a frame not yet shown counts as shown
    return window && (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE);
}

// The lock key behind each of the framework's indicator ids (CAP, NUM, SCRL).
int indicatorKey(unsigned id)
{
    switch (id) {
    case 59137:
        return VK_CAPITAL;
    case 59138:
        return VK_NUMLOCK;
    case 59139:
        return VK_SCROLL;
    default:
        return 0;
    }
}

// Copies `text` into a tooltip request's buffer of `size` characters, cutting it between characters.
void copyTip(const std::wstring& text, wchar_t* buffer, size_t size)
{
    size_t n = std::min(text.size(), size - 1);
    if (n > 0 && n < text.size() && IS_HIGH_SURROGATE(text[n - 1]))
        --n;
    text.copy(buffer, n);
    buffer[n] = L'\0';
}

void copyTip(const std::wstring& text, char* buffer, size_t size)
{
    int n = int(text.size()), written = 0;
    // the longest head of the text that fits, in the program's code page
    while (n > 0 &&
           (written = WideCharToMultiByte(CP_ACP, 0, text.c_str(), n, buffer, int(size) - 1, nullptr, nullptr)) == 0)
        n -= n > 1 && IS_LOW_SURROGATE(text[size_t(n) - 1]) ? 2 : 1;
    buffer[written] = '\0';
}

// Fills a narrow or wide tooltip request with the tooltip of the command it names.
template <typename Request> void answerTip(Request& request, const winFrame& frame)
{
    UINT_PTR id = request.hdr.idFrom;
    if (request.uFlags & TTF_IDISHWND)
        id = UINT_PTR(GetDlgCtrlID(reinterpret_cast<HWND>(id)));
    copyTip(id ? frame.tooltipText(unsigned(id)) : std::wstring(), request.szText, std::size(request.szText));
    request.lpszText = request.szText;
    request.hinst = nullptr;
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
    HMENU menu = loadMenu(resourceId);
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
        messageText_ = winText::load(idleMessageId);
        if (!OnCreate(*reinterpret_cast<CREATESTRUCTW*>(lParam)))
            return -1;
        loadBarState();
        onIdleUpdate();
        return 0;
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
    case WM_SETCURSOR:
        if (OnSetCursor(LOWORD(lParam)))
            return TRUE;
        break;
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

HMENU winFrame::loadMenu(unsigned resourceId)
{
    return hasResource(resourceId, RT_MENU) ? LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resourceId))
                                            : nullptr;
}

bool winFrame::OnCreate(const CREATESTRUCTW&)
{
    return view_ && view_->create(hwnd());
}

void winFrame::setBars(winToolBar* toolBar, winStatusBar* statusBar)
{
    toolBar_ = toolBar;
    statusBar_ = statusBar;
    if (toolBar_)
        toolBar_->onDocked = [this](winToolBar::Side) {
            recalcLayout();
            saveBarState();
        };
    setMessageText(messageText_);
}

void winFrame::layoutBars(RECT& client)
{
    if (statusBar_)
        statusBar_->place(client);
    if (toolBar_)
        toolBar_->place(client);
}

bool winFrame::barVisible(unsigned barId) const
{
    return shown(barWindow(barId));
}

HWND winFrame::barWindow(unsigned barId) const
{
    if (barId == toolBarId && toolBar_)
        return toolBar_->hwnd();
    if (barId == statusBarId && statusBar_)
        return statusBar_->hwnd();
    return nullptr;
}

void winFrame::showBar(unsigned barId, bool show)
{
    HWND bar = barWindow(barId);
    if (!bar || shown(bar) == show)
        return;
    ShowWindow(bar, show ? SW_SHOWNA : SW_HIDE);
    recalcLayout();
    saveBarState();
}

void winFrame::saveBarState() const
{
    winApp* app = winApp::instance();
    if (!app || !toolBar_ || !statusBar_)
        return;
    winBarState state;
    state.toolBarVisible = barVisible(toolBarId) || toolBarHiddenForOverlay_;
    state.toolBarSide = toolBar_->side();
    state.statusBarVisible = barVisible(statusBarId);
    state.save(app->profileKey());
}

void winFrame::loadBarState()
{
    winApp* app = winApp::instance();
    if (!app || !toolBar_ || !statusBar_)
        return;
    winBarState state = winBarState::load(app->profileKey());
    // moving flows every button again: only when the bar is kept elsewhere
    if (toolBar_->dockingEnabled() && state.toolBarSide != toolBar_->side())
        toolBar_->setSide(state.toolBarSide);
    ShowWindow(toolBar_->hwnd(), state.toolBarVisible ? SW_SHOWNA : SW_HIDE);
    ShowWindow(statusBar_->hwnd(), state.statusBarVisible ? SW_SHOWNA : SW_HIDE);
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
    if (toolBar_ && shown(toolBar_->hwnd()))
        toolBar_->updateButtons([this](unsigned id, bool& enabled, bool& checked) {
            winCommandState state{enabled, checked};
            if (!routeUpdateCommand(id, state))
                state = {false, false};
            enabled = state.enabled;
            checked = state.checked;
        });
    if (statusBar_ && shown(statusBar_->hwnd()))
        statusBar_->updateIndicators([](unsigned id) {
            int key = indicatorKey(id);
            return key && (GetKeyState(key) & 1);
        });
}

bool winFrame::onCommand(unsigned id)
{
    switch (id) {
    case toolBarId:
    case statusBarId:
        if (!barWindow(id))
            return false;
        if (!(id == toolBarId && overlay_))
            showBar(id, !barVisible(id));
        return true;
    case nextPaneCommand:
    case prevPaneCommand:
        // one pane only: the focus stays in the text (or in the preview that shows in its place)
        OnSetFocus();
        return true;
    default:
        return false;
    }
}

bool winFrame::onUpdateCommand(unsigned id, winCommandState& state)
{
    switch (id) {
    case toolBarId:
    case statusBarId:
        if (!barWindow(id))
            return false;
        state.enabled = !(id == toolBarId && overlay_);
        state.checked = barVisible(id) || (id == toolBarId && toolBarHiddenForOverlay_);
        return true;
    case nextPaneCommand:
    case prevPaneCommand:
        state.enabled = true;
        return true;
    default:
        return false;
    }
}

void winFrame::showPrompt(unsigned id)
{
    prompting_ = true;
    std::wstring prompt;
    if (id)
        GetMessageString(id, prompt);
    if (statusBar_)
        statusBar_->setPaneText(0, prompt);
}

void winFrame::endPrompt()
{
    if (!prompting_)
        return;
    prompting_ = false;
    if (statusBar_)
        statusBar_->setPaneText(0, messageText_);
}

void winFrame::OnMenuSelect(unsigned item, unsigned flags, HMENU menu)
{
    if (flags == 0xFFFF && !menu) {
        endPrompt(); // the menu closed
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
        if (!toolBar_ || header.hwndFrom != toolBar_->hwnd())
            return false;
        const auto& hot = reinterpret_cast<const NMTBHOTITEM&>(header);
        if (hot.dwFlags & HICF_LEAVING)
            endPrompt();
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
    if (header.code == TTN_GETDISPINFOW)
        answerTip(reinterpret_cast<NMTTDISPINFOW&>(header), *this);
    else
        answerTip(reinterpret_cast<NMTTDISPINFOA&>(header), *this);
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
    if (HWND bar = barWindow(toolBarId)) {
        if (overlay && shown(bar)) {
            ShowWindow(bar, SW_HIDE);
            toolBarHiddenForOverlay_ = true;
        } else if (!overlay && toolBarHiddenForOverlay_) {
            ShowWindow(bar, SW_SHOWNA);
            toolBarHiddenForOverlay_ = false;
        }
    }
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
    if (statusBar_ && !prompting_)
        statusBar_->setPaneText(0, text);
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
    if (control && view_ && control == view_->hwnd()) {
        // a notification from the text, not a command
        view_->OnControlNotify(code);
        return true;
    }
    // a menu item, an accelerator, or a button of a bar (BN_CLICKED)
    if (control && code != BN_CLICKED)
        return true;
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
        if (!routeUpdateCommand(id, state))
            state = {false, false}; // nothing handles it

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
