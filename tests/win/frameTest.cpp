// Quillon's frame as the user meets it: the toolbar made from the bitmap resources, the menu translated
// to its last item, prompts and tooltips, the lock-key indicators and F6, the bars' state across a
// restart, and the rule that every menu command has its prompt and is either handled or greyed.
#include "quillonTestApp.h"
#include "resourceIds.h"

#include "app/qwzAppCatalog.h"
#include "app/qwzCQuillonApp.h"
#include "app/qwzDib.h"
#include "testSupport.h"
#include "win/winStatusBar.h"
#include "win/winText.h"
#include "win/winToolBar.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using qw::German;
using qw::QuillonTestApp;

TEST(Frame, ToolbarImagesLoadTopDownWithAndWithoutAlpha)
{
    int results[3] = {};
    for (unsigned id : {ID_FILE_NEW, ID_FILE_OPEN, ID_FILE_SAVE, ID_EDIT_UNDO, ID_EDIT_CUT, ID_EDIT_COPY, ID_EDIT_PASTE,
                        ID_FILE_PRINT, ID_APP_ABOUT}) {
        SCOPED_TRACE("bitmap " + std::to_string(id));
        qwzDib dib;
        int result = dib.load(id);
        ASSERT_NE(result, 0);
        ASSERT_EQ(dib.width(), 40);
        ASSERT_EQ(dib.height(), 40);
        int clear = 0, solid = 0;
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x) {
                clear += dib.alpha(x, y) == 0;
                solid += dib.alpha(x, y) == 255;
            }
        if (result == 1) {
            EXPECT_EQ(clear, 1600) << "an image without alpha has every alpha byte 0";
        } else {
            EXPECT_GT(clear, 0) << "a transparent background";
            EXPECT_GT(solid, 0) << "and opaque drawing";
        }
        ++results[result];
    }
    EXPECT_GT(results[1], 0);
    EXPECT_GT(results[2], 0);
    // New's green badge is at the bottom right; its mirror image at the top right is background
    qwzDib newImage;
    newImage.load(ID_FILE_NEW);
    EXPECT_EQ(newImage.alpha(34, 31), 255);
    EXPECT_GT(newImage.colour(34, 31).green, newImage.colour(34, 31).red);
    EXPECT_EQ(newImage.alpha(34, 8), 0);
    qwzDib missing;
    EXPECT_EQ(missing.load(1), 0);
    EXPECT_EQ(missing.bits(), nullptr);
}

// One pixel of image `index` of an image list, as the list draws it.
COLORREF imagePixel(HIMAGELIST list, int index, int x, int y)
{
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, 40, 40);
    HGDIOBJ old = SelectObject(dc, bitmap);
    ImageList_Draw(list, index, dc, 0, 0, ILD_NORMAL);
    COLORREF c = GetPixel(dc, x, y);
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return c;
}

// Quillon's frame on the plain test application, which handles neither About nor Check for Quillon Updates.
class FrameWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(app.openDocumentFile(L""), nullptr);
        frame = static_cast<qwzCMainFrame*>(app.mainFrame());
    }
    QuillonTestApp app{L"quillonTests-frame"};
    qwzCMainFrame* frame = nullptr;
};

TEST_F(FrameWindow, ToolbarHasItsButtonsSizesAndGreyedTwins)
{
    HWND bar = frame->toolBar()->hwnd();
    EXPECT_EQ(GetDlgCtrlID(bar), ID_VIEW_TOOLBAR);
    std::vector<int> ids;
    for (int i = 0, n = int(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0)); i < n; ++i) {
        TBBUTTON b = {};
        SendMessageW(bar, TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&b));
        ids.push_back(b.fsStyle & BTNS_SEP ? 0 : b.idCommand);
    }
    EXPECT_EQ(ids, (std::vector<int>{ID_FILE_NEW, ID_FILE_OPEN, ID_FILE_SAVE, 0, ID_EDIT_UNDO, ID_EDIT_CUT,
                                     ID_EDIT_COPY, ID_EDIT_PASTE, 0, ID_FILE_PRINT, 0, ID_APP_ABOUT}));
    LRESULT size = SendMessageW(bar, TB_GETBUTTONSIZE, 0, 0);
    EXPECT_EQ(LOWORD(size), 47);
    EXPECT_EQ(HIWORD(size), 46);
    for (HIMAGELIST list : {frame->normalImages(), frame->disabledImages()}) {
        int cx = 0, cy = 0;
        ImageList_GetIconSize(list, &cx, &cy);
        EXPECT_EQ(cx, 40);
        EXPECT_EQ(cy, 40);
        EXPECT_EQ(ImageList_GetImageCount(list), 9);
    }
    EXPECT_EQ(SendMessageW(bar, TB_GETIMAGELIST, 0, 0), reinterpret_cast<LRESULT>(frame->normalImages()));
    EXPECT_EQ(SendMessageW(bar, TB_GETDISABLEDIMAGELIST, 0, 0), reinterpret_cast<LRESULT>(frame->disabledImages()));
    // About's blue disc is grey in the disabled twin; its frame is the button face in both
    COLORREF blue = imagePixel(frame->normalImages(), 8, 10, 20), grey = imagePixel(frame->disabledImages(), 8, 10, 20);
    EXPECT_GT(GetBValue(blue), GetRValue(blue));
    EXPECT_EQ(GetRValue(grey), GetBValue(grey));
    EXPECT_EQ(GetGValue(grey), GetBValue(grey));
    EXPECT_EQ(imagePixel(frame->disabledImages(), 8, 0, 0), GetSysColor(COLOR_BTNFACE));

    // a command that nothing handles is greyed in the menu and on its button, however it was shown before
    HMENU help = GetSubMenu(GetMenu(frame->hwnd()), 3);
    SendMessageW(frame->hwnd(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(help), 3);
    EXPECT_TRUE(GetMenuState(help, ID_HELP_CHECK_VERSION, MF_BYCOMMAND) & MF_GRAYED) << "Check for Quillon Updates";
    frame->onIdleUpdate();
    EXPECT_FALSE(SendMessageW(bar, TB_ISBUTTONENABLED, ID_APP_ABOUT, 0)) << "About";
    EXPECT_TRUE(SendMessageW(bar, TB_ISBUTTONENABLED, ID_FILE_NEW, 0)) << "New, which the application handles";
}

// The text of item `i` of `menu`, as stored.
std::wstring itemText(HMENU menu, int i)
{
    wchar_t text[256] = {};
    GetMenuStringW(menu, UINT(i), text, 256, MF_BYPOSITION);
    return text;
}

// Walks the shown menu beside the resource's: every item is the translation of its English text.
void expectTranslated(HMENU shown, HMENU english, std::string& last)
{
    EXPECT_EQ(GetMenuItemCount(shown), GetMenuItemCount(english));
    for (int i = 0; i < GetMenuItemCount(english); ++i) {
        std::wstring source = itemText(english, i);
        if (source.empty())
            continue; // a separator
        std::string got = wt::narrow(itemText(shown, i));
        EXPECT_EQ(got, translate(wt::narrow(source).c_str()).str());
        EXPECT_NE(got, wt::narrow(source)) << "the German catalog translates every menu text";
        last = got;
        if (HMENU sub = GetSubMenu(english, i))
            expectTranslated(GetSubMenu(shown, i), sub, last);
    }
}

TEST_F(German, TheMenuIsTranslatedToItsLastItem)
{
    QuillonTestApp app(L"quillonTests-frame");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    HMENU english = LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(qwzCMainFrame::resourceId));
    std::string last;
    expectTranslated(GetMenu(app.mainFrame()->hwnd()), english, last);
    EXPECT_EQ(last, translate("&About Quillon...").str());
    DestroyMenu(english);
}

// The tooltip a frame gives for a wide or a narrow request.
template <class Request> std::wstring tooltip(HWND frame, UINT code, UINT_PTR id, UINT flags = 0)
{
    Request request = {};
    request.hdr = {frame, id, code};
    request.uFlags = flags;
    SendMessageW(frame, WM_NOTIFY, id, reinterpret_cast<LPARAM>(&request));
    if constexpr (sizeof request.szText[0] == 1) {
        wchar_t wide[80] = {};
        MultiByteToWideChar(CP_ACP, 0, request.lpszText ? request.lpszText : "<null>", -1, wide, 80);
        return wide;
    } else
        return request.lpszText ? request.lpszText : L"<null>";
}

// The prompt and the tooltip of string `id`: its translation up to and after the first "\n".
std::pair<std::wstring, std::wstring> halves(unsigned id)
{
    std::wstring whole = winText::fromUtf8(translate(platform::loadString(id).c_str()).str());
    size_t cut = whole.find(L'\n');
    return {whole.substr(0, cut), cut == std::wstring::npos ? whole : whole.substr(cut + 1)};
}

TEST_F(German, PromptsAndTooltipsAreTheTranslatedHalves)
{
    QuillonTestApp app(L"quillonTests-frame");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    qwzCMainFrame* frame = static_cast<qwzCMainFrame*>(app.mainFrame());
    const unsigned ids[] = {ID_FILE_NEW, ID_FILE_MRU_FILE1, IDP_OLE_INIT_FAILED,
                            1}; // with "\n", without, without and long, no string
    for (unsigned id : ids) {
        SCOPED_TRACE("string " + std::to_string(id));
        auto [expected, tip] = halves(id);
        std::wstring prompt;
        frame->GetMessageString(id, prompt);
        EXPECT_EQ(wt::narrow(prompt), wt::narrow(expected));
        tip.resize(std::min<size_t>(tip.size(), 79)); // the request's buffer holds 80 with the NUL
        EXPECT_EQ(wt::narrow(tooltip<NMTTDISPINFOW>(frame->hwnd(), TTN_GETDISPINFOW, id)), wt::narrow(tip));
        EXPECT_EQ(wt::narrow(tooltip<NMTTDISPINFOA>(frame->hwnd(), TTN_GETDISPINFOA, id)), wt::narrow(tip));
    }
    std::wstring prompt;
    frame->GetMessageString(ID_FILE_NEW, prompt);
    EXPECT_NE(wt::narrow(prompt), "Create a new document") << "translated";
    // a request that names a window asks for that control's tooltip
    HWND bar = frame->toolBar()->hwnd();
    EXPECT_EQ(wt::narrow(tooltip<NMTTDISPINFOW>(frame->hwnd(), TTN_GETDISPINFOW, UINT_PTR(bar), TTF_IDISHWND)),
              wt::narrow(halves(ID_VIEW_TOOLBAR).second));
}

TEST_F(FrameWindow, TheMessagePaneComesBackAfterAPromptAndTheIndicatorsAndF6FollowTheKeys)
{
    winStatusBar* bar = frame->statusBar();
    EXPECT_EQ(wt::narrow(bar->paneText(0)), "Ready");
    frame->setMessageText(L"Checking for newer versions...");
    HMENU file = GetSubMenu(GetMenu(frame->hwnd()), 0);
    SendMessageW(frame->hwnd(), WM_MENUSELECT, MAKEWPARAM(ID_FILE_OPEN, MF_HILITE), reinterpret_cast<LPARAM>(file));
    EXPECT_EQ(wt::narrow(bar->paneText(0)), "Open an existing document");
    SendMessageW(frame->hwnd(), WM_MENUSELECT, MAKEWPARAM(0, MF_POPUP | MF_HILITE), reinterpret_cast<LPARAM>(file));
    EXPECT_EQ(bar->paneText(0), L"") << "a popup has no prompt";
    SendMessageW(frame->hwnd(), WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    EXPECT_EQ(wt::narrow(bar->paneText(0)), "Checking for newer versions...");
    EXPECT_EQ(wt::narrow(frame->messageText()), "Checking for newer versions...");

    // F6 and Shift+F6 find no other pane: the focus goes back to the text
    ShowWindow(frame->hwnd(), SW_SHOW);
    SetForegroundWindow(frame->hwnd());
    BYTE saved[256] = {}, keys[256] = {};
    GetKeyboardState(saved);
    std::copy(std::begin(saved), std::end(saved), keys);
    for (bool on : {true, false}) {
        keys[VK_CAPITAL] = on ? 1 : 0; // bit 0: the lock is on
        keys[VK_NUMLOCK] = on ? 0 : 1;
        keys[VK_SCROLL] = on ? 1 : 0;
        keys[VK_SHIFT] = on ? 0x80 : 0;
        SetKeyboardState(keys);
        frame->onIdleUpdate();
        EXPECT_EQ(bar->paneText(1), on ? L"CAP" : L"");
        EXPECT_EQ(bar->paneText(2), on ? L"" : L"NUM");
        EXPECT_EQ(bar->paneText(3), on ? L"SCRL" : L"");
        SetFocus(frame->toolBar()->hwnd());
        MSG f6 = {frame->toolBar()->hwnd(), WM_KEYDOWN, VK_F6, 0x00400001, 0, {}};
        EXPECT_TRUE(app.preTranslateMessage(f6)) << "shift " << on;
        EXPECT_EQ(GetFocus(), frame->activeView()->hwnd()) << "shift " << on;
    }
    SetKeyboardState(saved);
}

bool checked(winFrame* frame, unsigned id)
{
    HMENU view = GetSubMenu(GetMenu(frame->hwnd()), 2);
    SendMessageW(frame->hwnd(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(view), 2);
    return GetMenuState(view, id, MF_BYCOMMAND) & MF_CHECKED;
}

// Both bars hidden stay hidden after a restart; the toolbar shown again and docked on another side across
// restarts is checked end to end, where the user drags it.
TEST(Frame, BarsKeepTheirStateAcrossARestart)
{
    const std::wstring name = L"quillonTests-bars";
    wt::clearSettings(name);
    for (bool restarted : {false, true}) {
        QuillonTestApp app(name);
        ASSERT_NE(app.openDocumentFile(L""), nullptr);
        winFrame* frame = app.mainFrame();
        if (!restarted) {
            EXPECT_TRUE(checked(frame, ID_VIEW_TOOLBAR) && checked(frame, ID_VIEW_STATUS_BAR))
                << "both bars shown at first";
            frame->routeCommand(ID_VIEW_TOOLBAR);
            frame->routeCommand(ID_VIEW_STATUS_BAR);
        }
        EXPECT_FALSE(checked(frame, ID_VIEW_TOOLBAR)) << "restarted " << restarted;
        EXPECT_FALSE(checked(frame, ID_VIEW_STATUS_BAR)) << "restarted " << restarted;
        RECT client = {}, view = {};
        GetClientRect(frame->hwnd(), &client);
        GetWindowRect(frame->activeView()->hwnd(), &view);
        EXPECT_EQ(view.bottom - view.top, client.bottom) << "the view takes the bars' place; restarted " << restarted;
    }
}

// The product's own application, its message boxes and file dialogs answered, and a frame whose help file
// is missing.
class HelplessFrame : public qwzCMainFrame
{
public:
    std::wstring helpFile() const override
    {
        return winText::fromUtf8(qt::hostPath(qt::scratchDir("frame-no-help"))) + L"\\quillon.chm";
    }
};

class WalkApp : public qwzCQuillonApp
{
public:
    std::vector<wt::TestApp::Box> boxes;
    WalkApp()
    {
        // as the program's start-up does: the version dialog is a rich-edit control
        LoadLibraryW(L"Msftedit.dll");
        setAppName(L"quillonTests-walk");
        setRegistryKey(L"QuillonTests");
        addDocTemplate(winDocTemplate::make<qwzCQuillonDoc, qwzCQuillonView, HelplessFrame>(HelplessFrame::resourceId));
    }
    int messageBox(const std::wstring& text, UINT type, HWND) override
    {
        boxes.push_back({text, type});
        return IDCANCEL;
    }
    bool promptFileName(bool, std::wstring&) override
    {
        return false;
    }
};

// Cancels every dialog of this thread that comes up while it lives.
class DialogCanceller
{
public:
    DialogCanceller() : timer_(SetTimer(nullptr, 0, 50, tick)) {}
    ~DialogCanceller()
    {
        KillTimer(nullptr, timer_);
    }

private:
    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD)
    {
        EnumThreadWindows(GetCurrentThreadId(), cancel, 0);
    }
    static BOOL CALLBACK cancel(HWND window, LPARAM)
    {
        wchar_t name[16] = {};
        GetClassNameW(window, name, 16);
        if (IsWindowVisible(window) && std::wstring(name) == L"#32770")
            PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
        return TRUE;
    }
    UINT_PTR timer_;
};

TEST(Frame, EveryMenuCommandHasItsPromptAndIsHandledOrGreyed)
{
    // a version check, once there is one, must not go out to the network
    qt::ScopedEnv env;
    env.set("QWZ_PRODUCT_SERVER", "http://127.0.0.1:9");
    WalkApp app;
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    winFrame* frame = app.mainFrame();
    frame->activeView()->setText(L"some text");
    frame->activeView()->setSelection(0, 4);
    struct Item {
        HMENU popup;
        int index;
        unsigned id;
    };
    std::vector<Item> items;
    HMENU bar = GetMenu(frame->hwnd());
    for (int p = 0; p < GetMenuItemCount(bar); ++p)
        for (int i = 0, n = GetMenuItemCount(GetSubMenu(bar, p)); i < n; ++i)
            if (UINT id = GetMenuItemID(GetSubMenu(bar, p), i); id != 0 && id != UINT(-1))
                items.push_back({GetSubMenu(bar, p), p, id});
    EXPECT_GT(items.size(), 15u) << "the main menu was read";
    // Exit goes last: it ends the window
    std::stable_partition(items.begin(), items.end(), [](const Item& item) { return item.id != ID_APP_EXIT; });
    DialogCanceller canceller;
    int handled = 0;
    for (const Item& item : items) {
        // the string table gives each command a prompt and, after "\n", a tooltip; a recent file has a
        // prompt only, as the menu shows its name
        std::wstring prompt, tip = frame->tooltipText(item.id);
        frame->GetMessageString(item.id, prompt);
        EXPECT_FALSE(prompt.empty()) << "command " << item.id << " has no prompt";
        EXPECT_TRUE(item.id == ID_FILE_MRU_FILE1 || (!tip.empty() && tip != prompt))
            << "command " << item.id << ": tooltip " << wt::narrow(tip);
        SendMessageW(frame->hwnd(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(item.popup), item.index);
        if (GetMenuState(item.popup, item.id, MF_BYCOMMAND) & MF_GRAYED)
            continue;
        EXPECT_TRUE(frame->routeCommand(item.id)) << "command " << item.id << " is enabled but nothing handles it";
        ++handled;
    }
    EXPECT_GE(handled, 10);
    EXPECT_EQ(frame->hwnd(), nullptr) << "Exit closed the window";
    MSG quit;
    while (PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
    // Help found no help file
    auto help = std::find_if(app.boxes.begin(), app.boxes.end(),
                             [](const wt::TestApp::Box& box) { return box.text == L"Unable to find the help file"; });
    ASSERT_NE(help, app.boxes.end());
    EXPECT_EQ(help->type & MB_ICONMASK, UINT(MB_ICONERROR));
}

} // namespace
