// Command routing: a command from the menu or an accelerator reaches frame, view, document and
// application in that order and stops at the first that handles it; menu items take the states the
// targets give them.
#include "winTestApp.h"

#include <gtest/gtest.h>

#include <set>

namespace
{

std::vector<std::string> trail;

struct Claims {
    std::set<unsigned> frame, view, document, app;
} claims;

bool record(const char* who, const std::set<unsigned>& mine, unsigned id)
{
    trail.push_back(who);
    return mine.count(id) != 0;
}

class RouteFrame : public winFrame
{
public:
    bool onCommand(unsigned id) override
    {
        return record("frame", claims.frame, id);
    }
};
class RouteView : public winEditView
{
public:
    bool onCommand(unsigned id) override
    {
        return record("view", claims.view, id) || (claims.view.empty() && winEditView::onCommand(id));
    }
};
class RouteDocument : public wt::TestDocument
{
public:
    bool onCommand(unsigned id) override
    {
        return record("document", claims.document, id);
    }
    bool onUpdateCommand(unsigned id, winCommandState& state) override
    {
        if (id != ID_EDIT_GOTO_LINE)
            return false;
        state.enabled = false;
        return true;
    }
};
class RouteApp : public wt::TestApp
{
public:
    RouteApp() : TestApp(L"winTests-route")
    {
        addDocTemplate(winDocTemplate::make<RouteDocument, RouteView, RouteFrame>(wt::frameResource));
    }
    bool onCommand(unsigned id) override
    {
        return record("app", claims.app, id);
    }
};

struct RouteCase {
    std::set<unsigned> frame, view, document, app;
    std::vector<std::string> expected;
};

TEST(CommandRoutingTest, FrameThenViewThenDocumentThenApplicationUntilOneHandles)
{
    const unsigned id = 40000;
    const RouteCase cases[] = {
        {{id}, {}, {}, {}, {"frame"}},
        {{}, {id}, {}, {}, {"frame", "view"}},
        {{}, {}, {id}, {}, {"frame", "view", "document"}},
        {{}, {}, {}, {id}, {"frame", "view", "document", "app"}},
        {{}, {}, {}, {}, {"frame", "view", "document", "app"}},
        {{id}, {id}, {id}, {id}, {"frame"}},
    };
    RouteApp app;
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    HWND frame = app.mainFrame()->hwnd();
    for (size_t i = 0; i < std::size(cases); ++i) {
        claims = {cases[i].frame, cases[i].view, cases[i].document, cases[i].app};
        trail.clear();
        SendMessageW(frame, WM_COMMAND, MAKEWPARAM(id, 0), 0);
        EXPECT_EQ(trail, cases[i].expected) << "case " << i;
    }
    claims = {};
}

TEST(CommandRoutingTest, AcceleratorF3ReachesTheViewAndOpensFind)
{
    claims = {};
    RouteApp app;
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    winFrame* frame = app.mainFrame();
    ASSERT_NE(frame->accelerators(), nullptr);
    // Find is greyed while there is no text, and an accelerator of a greyed item does nothing
    MSG msg = {frame->activeView()->hwnd(), WM_KEYDOWN, VK_F3, 0x003D0001, 0, {}};
    app.preTranslateMessage(msg);
    EXPECT_EQ(frame->activeView()->findDialog(), nullptr);
    frame->activeView()->setText(L"text to search");
    trail.clear();
    EXPECT_TRUE(app.preTranslateMessage(msg));
    EXPECT_EQ(trail, (std::vector<std::string>{"frame", "view"}));
    HWND find = frame->activeView()->findDialog();
    ASSERT_NE(find, nullptr);
    EXPECT_TRUE(IsWindow(find));
    // a keystroke in the Find dialog belongs to the dialog, not to the frame's accelerators
    trail.clear();
    MSG inDialog = {find, WM_KEYDOWN, VK_F3, 0x003D0001, 0, {}};
    app.preTranslateMessage(inDialog);
    EXPECT_TRUE(trail.empty());
}

TEST(CommandRoutingTest, MenuItemsTakeTheStatesOfTheirTargets)
{
    claims = {};
    RouteApp app;
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    winFrame* frame = app.mainFrame();
    HWND view = frame->activeView()->hwnd();
    HMENU edit = GetSubMenu(GetMenu(frame->hwnd()), 1);
    ASSERT_NE(edit, nullptr);
    auto greyed = [&](unsigned id) { return (GetMenuState(edit, id, MF_BYCOMMAND) & MF_GRAYED) != 0; };

    SetWindowTextW(view, L"some text");
    SendMessageW(view, EM_SETSEL, 2, 2);
    SendMessageW(frame->hwnd(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(edit), 1);
    EXPECT_TRUE(greyed(ID_EDIT_CUT)) << "Cut without a selection";
    EXPECT_TRUE(greyed(ID_EDIT_COPY)) << "Copy without a selection";
    EXPECT_FALSE(greyed(ID_EDIT_SELECT_ALL)) << "Select All with text";
    EXPECT_TRUE(greyed(ID_EDIT_GOTO_LINE)) << "the document greys Go To";

    SendMessageW(view, EM_SETSEL, 0, 4);
    SendMessageW(frame->hwnd(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(edit), 1);
    EXPECT_FALSE(greyed(ID_EDIT_CUT)) << "Cut with a selection";
    EXPECT_FALSE(greyed(ID_EDIT_COPY)) << "Copy with a selection";
}

} // namespace
