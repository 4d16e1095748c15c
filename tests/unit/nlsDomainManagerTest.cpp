// Language selection and catalog search through the domain manager, against msgfmt catalogs: the
// environment, the user locale, the language cache and the locale's name, and the warnings that come out
// of it. (The silent fallback to the bare language, switching translation off when no catalog is found,
// and a corrupt catalog, which ends the program, are checked end to end.)
#include <gtest/gtest.h>

#include <cstdlib>
#include <locale>
#include <string>
#include <vector>

#include "app/qwzAppCatalog.h"
#include "nls/nlsDomainManager.h"
#include "platform/platform.h"
#include "testSupport.h"

namespace
{

std::vector<std::string>& reports()
{
    static std::vector<std::string> seen;
    return seen;
}

class nlsDomainManagerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        // the program's own domain, made by any earlier test in this process that translated a text
        qwzTheAppCatalog().stop();
        for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG", "NLSPATH", "QUILLON_USER_LOCALE"})
            env_.set(name, nullptr);
        saved_ = nlsDataBase::reportHook();
        nlsDataBase::reportHook() = [](void*, const nlsError& e) {
            reports().push_back(e.text());
            return 1;
        };
        reset();
    }
    void TearDown() override
    {
        reset();
        nlsDataBase::reportHook() = saved_;
        EXPECT_EQ(nlsDomainManager::domainCount(), 0) << "a test left a domain registered";
        EXPECT_EQ(nlsDataBase::first(), nullptr) << "a test left a database loaded";
    }
    static void reset()
    {
        nlsDomainManager::setSkipEnvironment(0);
        nlsDomainManager::setFallbackWarning(0);
        nlsDomainManager::setLanguageForAllDomains("");
        nlsDomainManager::clearSystemLanguage();
        nlsDomainManager::setLastCategory(0);
        reports().clear();
    }
    qt::ScopedEnv env_;

    static std::string dir(const char* variant)
    {
        return qt::dataPath(std::string("nls/") + variant);
    }

    nlsDataBase::ReportHook saved_ = nullptr;
};

TEST_F(nlsDomainManagerTest, TheFirstNonEmptyVariableChoosesTheLanguage)
{
    const struct {
        const char *lcAll, *lcMessages, *lang;
        const char* chosen;
        const char* open;
    } cases[] = {
        {"German", "French", "Spanish", "German", "Öffnen"},
        {"", "German", "French", "German", "Öffnen"},
        {nullptr, nullptr, "German", "German", "Öffnen"},
        {nullptr, "Klingon", "German", "Klingon", "Open"},
    };
    for (const auto& c : cases) {
        reset();
        env_.set("LC_ALL", c.lcAll);
        env_.set("LC_MESSAGES", c.lcMessages);
        env_.set("LANG", c.lang);
        EXPECT_STREQ(nlsDomainManager::systemLanguage(1).text(), c.chosen);
        nlsDomain* d = nlsDomainManager::createDomain(dir("little").c_str(), "quillon");
        EXPECT_STREQ(nlsDomainManager::translate(d, "Open"), c.open) << "chosen " << c.chosen;
        nlsDomainManager::destroyDomain(d);
    }
    EXPECT_EQ(reports(),
              std::vector<std::string>{"NLS Warning: Catalog <quillon> failed to load for language <Klingon>"});
}

// Whether this platform lets a test choose the user's locale through QUILLON_USER_LOCALE.
bool chooseUserLocale(qt::ScopedEnv& env, const char* locale)
{
    env.set("QUILLON_USER_LOCALE", locale);
    std::string wanted = locale;
    return platform::userDefaultLocale().englishLanguage == wanted.substr(0, wanted.find('|'));
}

TEST_F(nlsDomainManagerTest, TheUserLocaleDecidesWhenTheEnvironmentIsSilent)
{
    const struct {
        const char* locale;
        const char *full, *bare;
    } cases[] = {
        {"English (United Kingdom)|ENG|GBR", "English-GBR", "English"},
        {"German (Germany)|DEU|DEU", "German", "German"},
        {"Spanish (Spain, International Sort)|ESN|ESP", "Spanish-ESP", "Spanish"},
    };
    if (!chooseUserLocale(env_, cases[0].locale))
        GTEST_SKIP() << "the system's own user locale stands here; the end-to-end tests start from it";
    for (const auto& c : cases) {
        chooseUserLocale(env_, c.locale);
        reset();
        EXPECT_STREQ(nlsDomainManager::systemLanguage(1).text(), c.full) << c.locale;
        reset();
        EXPECT_STREQ(nlsDomainManager::systemLanguage(3).text(), c.bare) << c.locale;
    }
    chooseUserLocale(env_, "German (Germany)|DEU|DEU");
    reset();
    nlsDomain* d = nlsDomainManager::createDomain(dir("little").c_str(), "quillon");
    EXPECT_STREQ(nlsDomainManager::translate(d, "Find"), "Suchen");
    nlsDomainManager::destroyDomain(d);
    // skipping the environment leaves LC_ALL unread
    env_.set("LC_ALL", "Klingon");
    reset();
    nlsDomainManager::setSkipEnvironment(1);
    EXPECT_STRNE(nlsDomainManager::systemLanguage(1).text(), "Klingon");
}

// The system language is kept between calls; only a call for another category than the last, other than
// category 1, looks again.
TEST_F(nlsDomainManagerTest, TheSystemLanguageIsKeptUntilAnotherCategoryAsks)
{
    const struct {
        const char* lcAll;
        int category;
        const char* answer;
    } steps[] = {
        {"German", 1, "German"},  {"French", 1, "German"},   {"French", 3, "French"},    {"Spanish", 3, "French"},
        {"Spanish", 1, "French"}, {"Italian", 2, "Italian"}, {"Japanese", 2, "Italian"}, {"Japanese", 5, "Japanese"},
    };
    for (const auto& step : steps) {
        env_.set("LC_ALL", step.lcAll);
        EXPECT_STREQ(nlsDomainManager::systemLanguage(step.category).text(), step.answer)
            << "LC_ALL " << step.lcAll << ", category " << step.category;
    }
}

// The name handed to the C library: the user's own "<language>-<country>" with "_" in place of its "-",
// any other name as it stands, and "????" reported when the user's default itself fails.
TEST_F(nlsDomainManagerTest, TheLocaleNameTakesAnUnderscoreOnlyForTheUsersOwnLanguage)
{
    static std::vector<std::string> seen;
    auto savedHook = nlsDomainManager::localeReportHook();
    nlsDomainManager::localeReportHook() = [](void*, const nlsError& e) {
        seen.push_back(e.text());
        return 1;
    };
    const struct {
        const char* userLocale;
        const char* requested;
        const char* report;
    } cases[] = {
        {"Klingon (Qo'noS)|TLH|QOS", "Klingon-QOS", "NLS Warning: Setting up locale for language <Klingon_QOS> failed"},
        {"Klingon (Qo'noS)|TLH|QOS", "Klingon-XYZ", "NLS Warning: Setting up locale for language <Klingon-XYZ> failed"},
        // no name at all: the C library's own default, which LC_ALL spoils here
        {"||", "",
         "NLS Warning: Setting up locale for language <????"
         "> failed"},
    };
    for (const auto& c : cases) {
        reset();
        seen.clear();
        if (!chooseUserLocale(env_, c.userLocale))
            continue; // the system's own user locale stands: nothing to choose from here
        env_.set("LC_ALL", *c.requested ? nullptr : "Klingon");
        nlsDomainManager::setSkipEnvironment(*c.requested ? 0 : 1);
        nlsDomainManager::setLanguageForAllDomains(c.requested);
        EXPECT_EQ(seen, std::vector<std::string>{c.report}) << "requested \"" << c.requested << "\"";
        EXPECT_FALSE(nlsDomainManager::localeSet());
        env_.set("LC_ALL", nullptr);
    }
    nlsDomainManager::localeReportHook() = savedHook;
}

TEST_F(nlsDomainManagerTest, SettingTheLanguageForAllDomainsReloads)
{
    env_.set("LC_ALL", "English");
    std::string dirs = dir("little") + ";" + dir("fallback");
    nlsDomain* d = nlsDomainManager::createDomain(dirs.c_str(), "quillon");
    EXPECT_STREQ(nlsDomainManager::translate(d, "Color"), "Colour");
    nlsDomainManager::setLanguageForAllDomains("German");
    EXPECT_STREQ(nlsDomainManager::translate(d, "Color"), "Color");
    EXPECT_STREQ(nlsDomainManager::translate(d, "Save As..."), "Speichern unter...");
    EXPECT_STREQ(nlsDomainManager::requestedLanguage().text(), "German");
    EXPECT_EQ(nlsDomainManager::setDomainLanguage(d, "German"), 1);
    EXPECT_EQ(nlsDomainManager::setDomainLanguage(d, "Klingon"), 0) << "falls back to the system language";
    EXPECT_STREQ(nlsDomainManager::translate(d, "Color"), "Colour");
    EXPECT_TRUE(reports().size() == 1 && reports()[0].find("<Klingon>") != std::string::npos);
    // the requested language's own text handed back: copied before the old text is let go
    nlsDomainManager::setLanguageForAllDomains(nlsDomainManager::requestedLanguage().text());
    EXPECT_STREQ(nlsDomainManager::translate(d, "Save As..."), "Speichern unter...");
    nlsDomainManager::destroyDomain(d);
}

TEST_F(nlsDomainManagerTest, NlsPathIsSearchedAfterTheDomainsDirectory)
{
    env_.set("LC_ALL", "German");
    nlsDomain* none = nlsDomainManager::createDomain("", "quillon");
    EXPECT_FALSE(none->loaded()) << "no directory and no NLSPATH: no search at all";
    EXPECT_TRUE(reports().empty());
    nlsDomainManager::destroyDomain(none);

    // set but empty is not unset: the search runs, finds nothing and says so (where the C library keeps
    // an empty variable at all)
    env_.set("NLSPATH", "");
    if (std::getenv("NLSPATH")) {
        nlsDomain* empty = nlsDomainManager::createDomain("", "quillon");
        EXPECT_TRUE(empty->loaded());
        EXPECT_EQ(reports(),
                  std::vector<std::string>{"NLS Warning: Catalog <quillon> failed to load for language <German>"});
        nlsDomainManager::destroyDomain(empty);
        reports().clear();
    }

    env_.set("NLSPATH", (dir("nowhere") + ";" + dir("big-nohash")).c_str());
    nlsDomain* d = nlsDomainManager::createDomain("", "quillon");
    EXPECT_TRUE(d->loaded());
    EXPECT_STREQ(nlsDomainManager::translate(d, "Exit"), "Beenden");
    EXPECT_FALSE(d->database()->hashed());
    nlsDomainManager::destroyDomain(d);
}

TEST_F(nlsDomainManagerTest, SettingTheLocaleInstallsNumbersWithoutGrouping)
{
    env_.set("LC_ALL", "German");
    uint32_t code = nlsDomainManager::setLocale(0);
    EXPECT_EQ(code, 0u) << "the C library knows the languages Quillon ships";
    if (code == 0) {
        EXPECT_TRUE(nlsDomainManager::localeSet());
        const auto& punct = std::use_facet<std::numpunct<char>>(std::locale());
        EXPECT_EQ(punct.thousands_sep(), '\0');
        EXPECT_EQ(punct.grouping(), "");
        EXPECT_EQ(punct.decimal_point(), nlsDomainManager::decimalPoint());
    }
}

} // namespace
