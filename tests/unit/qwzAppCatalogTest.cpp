// The application's catalog against an installation-like tree holding a real German catalog: a translation
// before the directory was known, and formatting of translations. (Which language is used, and a language
// without catalog switched off to English, are checked end to end.)
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

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
            env_.set(name, nullptr);
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
    qt::ScopedEnv env_;
};

// A text translated before the catalog directory was known must not leave the domain it made without
// catalogs: the next translation after the directory is set searches there.
TEST_F(qwzAppCatalogTest, ATranslationBeforeTheDirectoryWasSetDoesNotKeepTheRunEnglish)
{
    env_.set("LC_ALL", "German");
    qwzAppCatalog::setBaseDirectory(utString(""));
    qwzAppCatalog catalog;
    EXPECT_EQ(catalog.translate("Save").str(), "Save") << "no catalogs known yet";
    qwzAppCatalog::setBaseDirectory(utString(qt::hostPath(root_).c_str()));
    catalog.start();
    EXPECT_EQ(catalog.usedLanguage().str(), "German");
    EXPECT_EQ(catalog.translate("Save").str(), "Speichern");
}

// An installation under a folder whose name holds ";" (allowed on Windows) speaks its language: the
// catalog directory is searched whole, as the language-directory test takes it.
TEST_F(qwzAppCatalogTest, AnInstallationDirectoryHoldingASemicolonLoadsItsCatalogs)
{
    std::string installed = qt::scratchDir("Tools;Old") + "/lib;locale";
    std::filesystem::create_directories(installed + "/German/LC_MESSAGES");
    qt::writeFile(installed + "/German/LC_MESSAGES/quillon.mo",
                  qt::readFile(qt::dataPath("nls/little/German/LC_MESSAGES/quillon.mo")));
    qwzAppCatalog::setBaseDirectory(utString(qt::hostPath(installed).c_str()));
    env_.set("LC_ALL", "German");
    std::vector<std::string> seen;
    static std::vector<std::string>* reports = &seen;
    nlsDataBase::ReportHook saved = nlsDataBase::reportHook();
    nlsDataBase::reportHook() = [](void*, const nlsError& e) {
        reports->push_back(e.text());
        return 1;
    };
    qwzAppCatalog catalog;
    catalog.start();
    EXPECT_EQ(catalog.usedLanguage().str(), "German");
    EXPECT_EQ(catalog.translate("Save").str(), "Speichern");
    EXPECT_EQ(seen, std::vector<std::string>{}) << "no warning";
    catalog.stop();
    nlsDataBase::reportHook() = saved;
}

// Runs in a child process: the process-wide record keeps its domain until exit. Every mismatch goes to
// standard error, so the parent sees what came.
void checkProcessWideTranslate()
{
    int mismatches = 0;
    auto expect = [&](const std::string& came, const std::string& expected) {
        if (came != expected) {
            std::fprintf(stderr, "expected \"%.60s\" (%zu bytes), came \"%.60s\" (%zu bytes)\n", expected.c_str(),
                         expected.size(), came.c_str(), came.size());
            ++mismatches;
        }
    };
    expect(translate("Find").str(), "Suchen");
    expect(translateFormat("Line %d of %d", 3, 7).str(), "Zeile 3 von 7");
    expect(translateFormat("You are running the latest version of %s.", "Quillon 4.3.4002").str(),
           "Sie verwenden die neueste Version von Quillon 4.3.4002.");
    expect(translateFormat("%d%%", 42).str(), "42%");
    std::fflush(stderr);
    std::exit(mismatches);
}

TEST_F(qwzAppCatalogTest, TheProcessWideTranslateFormatsTheTranslation)
{
    env_.set("LC_ALL", "German");
    EXPECT_EXIT(checkProcessWideTranslate(), testing::ExitedWithCode(0), "^$");
}

} // namespace
