// A catalog's printf formats against their English texts, through a catalog that msgfmt compiled without
// its format check: a translation is used for formatting only when it reads the English text's
// arguments, and each refused message is reported once.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/qwzAppCatalog.h"
#include "document/qwzStringOutput.h"
#include "nls/nlsDomainManager.h"
#include "resourceIds.h"
#include "testSupport.h"

namespace
{

std::vector<std::string>& reports()
{
    static std::vector<std::string> seen;
    return seen;
}

class nlsPrintfFormatTest : public testing::Test
{
protected:
    void SetUp() override
    {
        qwzTheAppCatalog().stop();
        for (const char* name : {"LC_MESSAGES", "LANG", "NLSPATH", "QUILLON_USER_LOCALE"})
            env_.set(name, nullptr);
        env_.set("LC_ALL", "German");
        nlsDomainManager::setLanguageForAllDomains("");
        nlsDomainManager::clearSystemLanguage();
        saved_ = nlsDataBase::reportHook();
        nlsDataBase::reportHook() = [](void*, const nlsError& e) {
            reports().push_back(e.text());
            return 1;
        };
        reports().clear();
    }
    void TearDown() override
    {
        qwzTheAppCatalog().stop();
        nlsDataBase::reportHook() = saved_;
        nlsDomainManager::clearSystemLanguage();
        EXPECT_EQ(nlsDataBase::first(), nullptr) << "a test left a database loaded";
    }

    nlsDataBase::ReportHook saved_ = nullptr;
    qt::ScopedEnv env_;
};

struct Case {
    const char* english;
    const char* used; // the translation, or the English text when it is refused
    const char* why;
};

const Case cases[] = {
    {"Line %d of %d", "Zeile %i von %d", "%i reads what %d reads"},
    {"%5.2f%% done", "%.1f %% erledigt", "flags, width and precision read nothing"},
    {"Code %x", "Kode %#08X", "%X reads what %x reads"},
    {"%-10s|%lu", "%s|%10lu", "the same types in the same order"},
    {"%*d items", "%*d Einträge", "a \"*\" width in both"},
    {"No arguments", "Keine Argumente, 100 %%", "a written percent sign reads nothing"},
    {"Opened %s", "Opened %s", "one argument more"},
    {"%s copied to %s", "%s copied to %s", "one argument fewer"},
    {"%s: line %d", "%s: line %d", "the order turned round"},
    {"%d files", "%d files", "a string for an int"},
    {"%lu bytes", "%lu bytes", "an int for an unsigned long"},
    {"Ratio %f", "Ratio %f", "a long double for a double"},
    {"Saved %s", "Saved %s", "%n writes to memory"},
    {"%s and %s", "%s and %s", "numbered arguments, which msgfmt's check lets pass"},
    {"%d items", "%d items", "a \"*\" width reads one int more"},
    {"Done.", "Done.", "an argument where the English text takes none"},
    {"%s found", "%s found", "a conversion letter that C does not know"},
    {"%d%% done", "%d%% done", "a lone percent sign that reads a double (\"% e\")"},
};

TEST_F(nlsPrintfFormatTest, OnlyATranslationThatReadsTheEnglishArgumentsIsUsed)
{
    nlsDomain* domain = nlsDomainManager::createDomain(qt::dataPath("nls/formats").c_str(), "quillon");
    ASSERT_NE(domain->database(), nullptr) << "the catalog did not load";
    size_t refused = 0;
    for (int round = 0; round < 2; ++round) {
        for (const Case& c : cases) {
            EXPECT_STREQ(nlsDomainManager::translateFormat(domain, c.english), c.used) << c.why;
            if (round == 0 && std::string(c.english) == c.used)
                ++refused;
        }
        EXPECT_EQ(reports().size(), refused) << "one warning for each refused message, however often it is asked";
    }
    EXPECT_STREQ(nlsDomainManager::translate(domain, "Opened %s"), "%s und %s geöffnet")
        << "a text shown as it is keeps its translation";
    std::string path = nlsDataBase::first()->path().text();
    EXPECT_EQ(reports()[0], "NLS Warning: Catalog <" + path +
                                "> translates <Opened %s> with other printf conversions, so the English text was used");
    nlsDomainManager::destroyDomain(domain);
}

// The program's two ways of formatting a message, a string-table message printed on a channel and a
// text translated and formatted, both keep the English format when the translation reads other arguments.
TEST_F(nlsPrintfFormatTest, TheProgramFormatsWithTheEnglishTextWhenTheTranslationIsRefused)
{
    std::string root = qt::scratchDir("refused-formats");
    std::filesystem::create_directories(root + "/German/LC_MESSAGES");
    qt::writeFile(root + "/German/LC_MESSAGES/quillon.mo",
                  qt::readFile(qt::dataPath("nls/formats/German/LC_MESSAGES/quillon.mo")));
    utString savedBase = utString::copyOf(qwzAppCatalog::baseDirectory().str());
    qwzAppCatalog::setBaseDirectory(utString(qt::hostPath(root).c_str()));
    qwzTheAppCatalog().start();

    qwzStringOutput out;
    out.printMessage(0, IDS_PRODUCT_SERVER_IGNORED, "ftp://x");
    EXPECT_EQ(out.text().str(),
              "QWZ_PRODUCT_SERVER ignored: \"ftp://x\" is not http://HOST:PORT or https://HOST:PORT\n");
    EXPECT_EQ(translateFormat("%s: line %d", "a.txt", 3).str(), "a.txt: line 3");
    EXPECT_EQ(translateFormat("Line %d of %d", 3, 7).str(), "Zeile 3 von 7");
    ASSERT_EQ(reports().size(), 2u);
    EXPECT_NE(reports()[0].find("<QWZ_PRODUCT_SERVER ignored: \"%s\" is not http://HOST:PORT or "
                                "https://HOST:PORT\\n>"),
              std::string::npos)
        << "the line end of the message is written as an escape, so the warning stays one line: " << reports()[0];
    qwzAppCatalog::setBaseDirectory(savedBase);
}

} // namespace
