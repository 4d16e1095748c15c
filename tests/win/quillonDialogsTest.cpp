// Quillon's dialogs: the About box's texts and bold lines, and translation of captions and listed
// controls through the application's catalog, in English and in German (the installed catalogs).
#include "quillonTestApp.h"

#include "app/qwzAppCatalog.h"
#include "app/qwzCAboutDlg.h"
#include "app/qwzCQuillonApp.h"
#include "app/qwzVersionInfo.h"
#include "document/qwzCGoToLineDlg.h"
#include "res/resource.h"
#include "resourceIds.h"
#include "testSupport.h"
#include "win/winText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <ctime>

namespace
{

using qw::German;
using qw::QuillonTestApp;

struct AboutSeen {
    std::wstring caption, copyright, buildDate, language, others;
    LONG weights[3] = {};
};

AboutSeen showAbout(QuillonTestApp& app)
{
    AboutSeen seen;
    qw::whileModal(
        [&] {
            qwzCAboutDlg about(app.mainFrame()->hwnd());
            about.doModal();
        },
        [&](HWND dialog) {
            seen.caption = qw::textOf(dialog);
            seen.copyright = qw::textOf(GetDlgItem(dialog, IDC_ABOUT_COPYRIGHT));
            seen.buildDate = qw::textOf(GetDlgItem(dialog, IDC_ABOUT_BUILD_DATE));
            seen.language = qw::textOf(GetDlgItem(dialog, IDC_ABOUT_LANGUAGE));
            seen.others = qw::textOf(GetDlgItem(dialog, IDC_ABOUT_OTHER_TRADEMARKS));
            int ids[3] = {IDC_ABOUT_COPYRIGHT, IDC_ABOUT_BUILD_DATE, IDC_ABOUT_LANGUAGE};
            for (int i = 0; i < 3; ++i) {
                HFONT font = reinterpret_cast<HFONT>(SendDlgItemMessageW(dialog, ids[i], WM_GETFONT, 0, 0));
                LOGFONTW description = {};
                GetObjectW(font, sizeof description, &description);
                seen.weights[i] = description.lfWeight;
            }
            SendMessageW(dialog, WM_COMMAND, IDOK, 0);
        });
    return seen;
}

int thisYear()
{
    std::time_t now = std::time(nullptr);
    std::tm local = {};
    localtime_s(&local, &now);
    return local.tm_year + 1900;
}

// The texts the box fills in; its fixed texts are the resource's, its caption the end-to-end test's.
TEST(AboutBox, ShowsVersionBuildAndLanguageWithTheFirstTwoLinesBold)
{
    QuillonTestApp app(L"quillonTests-about");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    AboutSeen seen = showAbout(app);
    const qwzVersionInfo& version = qwzVersionInfo::instance();
    EXPECT_EQ(wt::narrow(seen.copyright), version.displayName.str() + "\nCopyright (C) 2000-" +
                                              std::to_string(thisYear()) + " Tarvik\nAll rights reserved");
    EXPECT_EQ(wt::narrow(seen.buildDate), "Build Date: " + version.buildDate.str());
    const char* timeLocale = std::setlocale(LC_TIME, nullptr);
    EXPECT_EQ(wt::narrow(seen.language),
              "System requested language\t:  " + qwzTheAppCatalog().requestedLanguage().str() +
                  "\r\nQuillon language used\t:  " + qwzTheAppCatalog().usedLanguage().str() +
                  "\r\nLocale code page\t:  " + std::string(timeLocale ? timeLocale : "") + "\n");
    EXPECT_EQ(seen.weights[0], FW_BOLD);
    EXPECT_EQ(seen.weights[1], FW_BOLD);
    EXPECT_LT(seen.weights[2], FW_BOLD) << "the language lines keep the dialog font";
}

// The program's first start-up step is the catalogs' directory, then the framework's translation: a
// framework text translated before any window exists or the catalogs start is already German.
TEST_F(German, AFrameworkTextTranslatedBeforeTheWindowIsGerman)
{
    qwzTheAppCatalog().stop();
    qwzAppCatalog::setBaseDirectory(utString("")); // as in a process that has only begun
    qwzCQuillonApp::startTranslation(utString::copyOf(qt::hostPath(qt::dataPath("../dist/Quillon")).c_str()));
    std::wstring untitled = winText::load(WIN_IDS_UNTITLED);
    winApp::setTranslator(nullptr);
    qwzAppCatalog::setBaseDirectory(utString(qw::installedLocale().c_str()));
    EXPECT_EQ(wt::narrow(untitled), translate("Untitled").str());
    EXPECT_NE(untitled, L"Untitled");
}

TEST_F(German, TheAboutBoxIsGerman)
{
    ASSERT_EQ(qwzTheAppCatalog().usedLanguage().str(), "German");
    QuillonTestApp app(L"quillonTests-about");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    AboutSeen seen = showAbout(app);
    EXPECT_EQ(wt::narrow(seen.caption), translateFormat("About %s", "Quillon").str());
    EXPECT_NE(wt::narrow(seen.caption), "About Quillon") << "the catalog has the caption";
    EXPECT_EQ(wt::narrow(seen.buildDate),
              translateFormat("Build Date: %s", qwzVersionInfo::instance().buildDate.c_str()).str());
    EXPECT_NE(seen.buildDate.substr(0, 11), L"Build Date:");
    EXPECT_NE(wt::narrow(seen.others), "Other product and/or format names may be trademarks or registered "
                                       "trademarks of their respective owners.");
    EXPECT_NE(wt::narrow(seen.copyright).find(translate("All rights reserved").str()), std::string::npos);
    EXPECT_EQ(seen.language.find(L"Quillon language used"), std::wstring::npos);
    EXPECT_NE(seen.language.find(L"German"), std::wstring::npos);
}

TEST_F(German, DialogCaptionsAndControlsAreGerman)
{
    QuillonTestApp app(L"quillonTests-about");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    app.view()->setText(L"a\r\nb");
    std::wstring label, caption, cancel;
    qw::whileModal([&] { app.mainFrame()->routeCommand(qwzCQuillonView::goToLineCommand); },
                   [&](HWND dialog) {
                       label = qw::textOf(GetDlgItem(dialog, IDC_GOTO_LINE_LABEL));
                       caption = qw::textOf(dialog);
                       cancel = qw::textOf(GetDlgItem(dialog, IDCANCEL));
                       SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
                   });
    EXPECT_EQ(wt::narrow(label), translateFormat("Line Number (%d-%d):", 1, 2).str());
    EXPECT_NE(wt::narrow(label), "Line Number (1-2):");
    EXPECT_EQ(wt::narrow(caption), translate("Go To Line").str());
    EXPECT_NE(wt::narrow(caption), "Go To Line");
    EXPECT_EQ(wt::narrow(cancel), translate("Cancel").str());
    EXPECT_NE(wt::narrow(cancel), "Cancel");
}

// The base translates only the listed controls and the caption, and never an empty text (whose
// "translation" would be the catalog's header).
class ListedControlsDialog : public qwzCDialog
{
public:
    ListedControlsDialog() : qwzCDialog(IDD_ABOUTBOX)
    {
        translatedControls.push_back(IDC_ABOUT_LANGUAGE);
        translatedControls.push_back(IDOK);
    }
};

TEST_F(German, OnlyListedNonEmptyControlsAndTheCaptionAreTranslated)
{
    QuillonTestApp app(L"quillonTests-about");
    std::wstring caption, empty, listed, unlisted;
    qw::whileModal(
        [&] {
            ListedControlsDialog dialog;
            dialog.doModal();
        },
        [&](HWND dialog) {
            caption = qw::textOf(dialog);
            empty = qw::textOf(GetDlgItem(dialog, IDC_ABOUT_LANGUAGE));
            listed = qw::textOf(GetDlgItem(dialog, IDOK));
            unlisted = qw::textOf(GetDlgItem(dialog, IDC_ABOUT_OTHER_TRADEMARKS));
            SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        });
    EXPECT_EQ(wt::narrow(caption), translate("About Quillon").str());
    EXPECT_NE(wt::narrow(caption), "About Quillon");
    EXPECT_EQ(empty, L"");
    const char* others =
        "Other product and/or format names may be trademarks or registered trademarks of their respective owners.";
    EXPECT_EQ(wt::narrow(listed), translate("OK").str());
    EXPECT_EQ(wt::narrow(unlisted), others) << "a control that is not listed keeps its resource text";
    EXPECT_NE(translate(others).str(), others) << "although the catalog has it";
}

} // namespace
