// Test support for Quillon's window classes: a thread timer reaches into a modal dialog's own loop.
#include "quillonTestApp.h"

#include "app/qwzAppCatalog.h"
#include "nls/nlsDomainManager.h"
#include "testSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qw
{

namespace
{

std::function<void(HWND)> pendingAction;
bool acted = false;
std::vector<HWND> upBefore; // modeless dialogs (Find) that are not the modal one

bool isDialog(HWND window)
{
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    return IsWindowVisible(window) && std::wstring(name) == L"#32770";
}

BOOL CALLBACK collectDialog(HWND window, LPARAM list)
{
    if (isDialog(window))
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

BOOL CALLBACK findDialog(HWND window, LPARAM found)
{
    if (isDialog(window) && std::find(upBefore.begin(), upBefore.end(), window) == upBefore.end()) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

void CALLBACK onTimer(HWND, UINT, UINT_PTR id, DWORD)
{
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), findDialog, reinterpret_cast<LPARAM>(&dialog));
    if (!dialog || acted)
        return;
    KillTimer(nullptr, id);
    acted = true;
    pendingAction(dialog);
}

// The program domain is made once per process, with the catalog directory it finds then: point it at the
// installed catalogs before any test translates, with translation off until a test asks for a language.
class CatalogEnvironment : public testing::Environment
{
public:
    void SetUp() override
    {
        qt::ScopedEnv env;
        env.set("LC_ALL", "NoSuchLanguage");
        qwzAppCatalog::setBaseDirectory(utString(installedLocale().c_str()));
        qwzTheAppCatalog().start();
    }
};

testing::Environment* const catalogEnvironment = testing::AddGlobalTestEnvironment(new CatalogEnvironment);

} // namespace

void German::SetUp()
{
    std::string installed = qt::dataPath("../dist/Quillon/lib/locale/German/LC_MESSAGES/quillon.mo");
    ASSERT_TRUE(qt::fileExists(installed)) << "no installed German catalog at " << installed;
    restart("German");
}

void German::TearDown()
{
    restart("NoSuchLanguage");
}

void German::restart(const char* language)
{
    env_.set("LC_ALL", language);
    // the process's domain exists already: select the language for it, as a user's choice would
    nlsDomainManager::setLanguageForAllDomains(language);
    nlsDomainManager::clearSystemLanguage();
    nlsDomainManager::setLastCategory(0);
    qwzTheAppCatalog().start();
}

std::string installedLocale()
{
    return qt::hostPath(qt::dataPath("../dist/Quillon/lib/locale"));
}

void whileModal(const std::function<void()>& open, const std::function<void(HWND)>& act)
{
    pendingAction = act;
    acted = false;
    upBefore.clear();
    EnumThreadWindows(GetCurrentThreadId(), collectDialog, reinterpret_cast<LPARAM>(&upBefore));
    UINT_PTR timer = SetTimer(nullptr, 0, 20, onTimer);
    open();
    if (!acted)
        KillTimer(nullptr, timer);
    EXPECT_TRUE(acted) << "no modal dialog came up";
}

std::wstring textOf(HWND window)
{
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring scratchFile(const std::string& dir, const std::wstring& name, const std::string& bytes)
{
    std::wstring path = wt::scratch(dir) + L"\\" + name;
    wt::writeWide(path, bytes);
    return path;
}

} // namespace qw
