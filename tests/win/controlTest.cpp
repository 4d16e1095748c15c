// Subclassed controls: the object sees the control's messages, a notification sent to the parent frame
// or dialog comes back to the object, and a destroyed control lets go of its object.
#include "winTestApp.h"

#include "win/winControl.h"
#include "win/winDialog.h"

#include <gtest/gtest.h>

namespace
{

class CountingControl : public winControl
{
public:
    std::wstring typed;
    std::vector<UINT> notified;

protected:
    LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override
    {
        if (msg == WM_CHAR) {
            typed += wchar_t(wParam);
            if (wParam == L'#')
                return 0; // swallowed: never reaches the control
        }
        return winControl::HandleMessage(msg, wParam, lParam);
    }
    bool OnReflectedNotify(const NMHDR& header, LRESULT& result) override
    {
        notified.push_back(header.code);
        result = 42;
        return header.code == 1234u;
    }
};

std::wstring textOf(HWND h)
{
    wchar_t buf[256] = {};
    GetWindowTextW(h, buf, 256);
    return buf;
}

TEST(ControlTest, TheObjectSeesTheMessagesAndMaySwallowThem)
{
    wt::TestApp app(L"winTests-control");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    CountingControl control;
    ASSERT_TRUE(control.create(L"EDIT", WS_VISIBLE, 0, RECT{0, 0, 100, 20}, app.mainFrame()->hwnd(), 77));
    EXPECT_EQ(winControl::fromHandle(control.hwnd()), &control);
    for (wchar_t c : std::wstring(L"a#b"))
        SendMessageW(control.hwnd(), WM_CHAR, c, 1);
    EXPECT_EQ(wt::narrow(control.typed), "a#b");
    EXPECT_EQ(wt::narrow(textOf(control.hwnd())), "ab");
    CountingControl second;
    EXPECT_FALSE(second.attach(control.hwnd())) << "one object per control";
}

TEST(ControlTest, NotificationsComeBackFromTheFrameAndTheDialog)
{
    wt::TestApp app(L"winTests-control");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    winDialog dialog(wt::intDialog);
    ASSERT_TRUE(dialog.create());
    CountingControl inFrame, inDialog;
    ASSERT_TRUE(inFrame.create(L"EDIT", 0, 0, RECT{0, 0, 10, 10}, app.mainFrame()->hwnd(), 78));
    ASSERT_TRUE(inDialog.attach(GetDlgItem(dialog.hwnd(), wt::intField)));

    for (auto [parent, control] : {std::pair{app.mainFrame()->hwnd(), &inFrame}, {dialog.hwnd(), &inDialog}}) {
        NMHDR handled = {control->hwnd(), 0, 1234u};
        EXPECT_EQ(SendMessageW(parent, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&handled)), 42);
        NMHDR ignored = {control->hwnd(), 0, 99u};
        EXPECT_EQ(SendMessageW(parent, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&ignored)), 0);
        EXPECT_EQ(control->notified, (std::vector<UINT>{1234u, 99u}));
    }
}

TEST(ControlTest, ADestroyedControlLetsGoOfItsObject)
{
    wt::TestApp app(L"winTests-control");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    CountingControl control;
    ASSERT_TRUE(control.create(L"EDIT", 0, 0, RECT{0, 0, 10, 10}, app.mainFrame()->hwnd(), 79));
    DestroyWindow(control.hwnd());
    EXPECT_EQ(control.hwnd(), nullptr);
}

} // namespace
