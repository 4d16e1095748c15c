// The application's catalog start-up and translate against an installation-like tree holding a real
// German catalog: which language is used, the switch-off to English, and formatting of translations.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "app/qwzAppCatalog.h"
#include "nls/nlsDomainManager.h"
#include "testSupport.h"

namespace
{

class qwzAppCatalogTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG", "NLSPATH", "QUILLON_USER_LOCALE"})
            qt::setEnv(name, nullptr);
        nlsDomainManager::setLanguageForAllDomains("");
        nlsDomainManager::clearSystemLanguage();
        nlsDomainManager::setLastCategory(0);
        root_ = qt::scratchDir("app-catalog");
        std::filesystem::create_directories(root_ + "/German/LC_MESSAGES");
        qt::writeFile(root_ + "/German/LC_MESSAGES/quillon.mo",
                      qt::readFile(qt::dataPath("nls/little/German/LC_MESSAGES/quillon.mo")));
        qwzAppCatalog::setBaseDirectory(utString(qt::hostPath(root_).c_str()));
    }
    std::string root_;
};

TEST_F(qwzAppCatalogTest, TheRequestedLanguagesDirectoryIsUsed)
{
    qt::setEnv("LC_ALL", "German");
    qwzAppCatalog catalog;
    testing::internal::CaptureStdout();
    catalog.start();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "nothing to warn about";
    EXPECT_EQ(catalog.requestedLanguage().str(), "German");
    EXPECT_EQ(catalog.usedLanguage().str(), "German");
    EXPECT_EQ(catalog.translate("Save").str(), "Speichern");
    EXPECT_EQ(catalog.translate("Not in the catalog").str(), "Not in the catalog");
}

#ifndef _WIN32
TEST_F(qwzAppCatalogTest, TheBareLanguageDirectoryServesACountry)
{
    qt::setEnv("QUILLON_USER_LOCALE", "German (Switzerland)|DES|CHE");
    qwzAppCatalog catalog;
    catalog.start();
    EXPECT_EQ(catalog.requestedLanguage().str(), "German-CHE");
    EXPECT_EQ(catalog.usedLanguage().str(), "German");
    EXPECT_EQ(catalog.translate("Open").str(), "Öffnen");
}
#endif

TEST_F(qwzAppCatalogTest, WithoutADirectoryTranslationIsSwitchedOff)
{
    qt::setEnv("LC_ALL", "Klingon");
    qwzAppCatalog catalog;
    testing::internal::CaptureStdout();
    catalog.start();
    std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(catalog.requestedLanguage().str(), "Klingon");
    EXPECT_EQ(catalog.usedLanguage().str(), "English");
    EXPECT_EQ(catalog.translate("Save").str(), "Save");
    EXPECT_EQ(out, "NLS Warning: Catalog <quillon> failed to load for language <NO_TRANSLATION>\n"
                   "NLS Warning: Catalog <quillon> failed to load for language <English>\n");
    EXPECT_STREQ(nlsDomainManager::requestedLanguage().text(), "NO_TRANSLATION");
}

TEST_F(qwzAppCatalogTest, TheProcessWideTranslateFormatsTheTranslation)
{
    qt::setEnv("LC_ALL", "German");
    EXPECT_EQ(translate("Find").str(), "Suchen");
    EXPECT_EQ(translateFormat("Line %d of %d", 3, 7).str(), "Zeile 3 von 7");
    EXPECT_EQ(translateFormat("You are running the latest version of %s.", "Quillon 4.3.4002").str(),
              "Sie verwenden die neueste Version von Quillon 4.3.4002.");
    // longer than the first buffer: it doubles until the text fits
    std::string longText(10000, 'x');
    std::string formatted = translateFormat("You are running the latest version of %s.", longText.c_str()).str();
    std::string expected = "Sie verwenden die neueste Version von " + longText + ".";
    EXPECT_EQ(formatted.size(), expected.size());
    EXPECT_TRUE(formatted == expected) << "begins " << formatted.substr(0, 40);
    EXPECT_EQ(translateFormat("%d%%", 42).str(), "42%");
}

} // namespace
