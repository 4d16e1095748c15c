// Test support for Quillon's window classes: an application with Quillon's document template that
// answers message boxes from a script, and a way to act on a modal dialog while it runs.
#pragma once

#include "winTestApp.h"

#include "app/qwzCMainFrame.h"
#include "document/qwzCQuillonDoc.h"
#include "document/qwzCQuillonView.h"
#include "testSupport.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace qw
{

class QuillonTestApp : public wt::TestApp
{
public:
    explicit QuillonTestApp(const std::wstring& name = L"quillonTests") : wt::TestApp(name)
    {
        addDocTemplate(winDocTemplate::make<qwzCQuillonDoc, qwzCQuillonView, qwzCMainFrame>(qwzCMainFrame::resourceId));
    }
    qwzCQuillonDoc* doc() const
    {
        return static_cast<qwzCQuillonDoc*>(document());
    }
    qwzCQuillonView* view() const
    {
        return doc() ? doc()->getView() : nullptr;
    }
};

// Runs the German catalogs of the installation tree for one test, then switches translation off again.
class German : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;
    void restart(const char* language);

    qt::ScopedEnv env_;
};

// The installed catalogs' directory, as the program sees it.
std::string installedLocale();

// Calls `open`, which runs a modal dialog or message box, and `act` on it once it is shown (a dialog that
// was up before, such as Find, is not it); `act` must end it. Fails the test when no dialog came up.
void whileModal(const std::function<void()>& open, const std::function<void(HWND)>& act);

// The text of a window, whole.
std::wstring textOf(HWND window);

// A file's path in a fresh scratch directory, written with `bytes`.
std::wstring scratchFile(const std::string& dir, const std::wstring& name, const std::string& bytes);

} // namespace qw
