// The main frame. A menu that cannot be loaded or translated leaves the window without one and with the
// framework's title; creation still succeeds.
#include "app/qwzCMainFrame.h"

#include "app/qwzCMenu.h"
#include "app/qwzCText.h"
#include "app/qwzVersionInfo.h"

bool qwzCMainFrame::OnCreate(const CREATESTRUCTW& cs)
{
    if (!winFrame::OnCreate(cs))
        return false;
    qwzCMenu menu;
    menuTranslated_ = menu.load(resourceId);
    replaceMenu(menuTranslated_ ? menu.detach() : nullptr);
    if (menuTranslated_)
        setAppTitle(qwzWide(qwzVersionInfo::instance().fullName));
    // a hidden window gets no WM_SIZE before it is shown: size the view now, so that a file opened
    // before the first show is wrapped once, at the real width
    recalcLayout();
    return true;
}
