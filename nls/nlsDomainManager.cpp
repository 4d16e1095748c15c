// Language selection and catalog search for every registered domain. All state is process-wide and
// unlocked: the user-interface thread is the only caller.
#include "nls/nlsDomainManager.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <locale>
#include <stdexcept>
#include <string>

#include "foundation/utAssert.h"
#include "nls/nlsNumPunct.h"
#include "nls/nlsSearchPath.h"
#include "platform/platform.h"

namespace
{

const char* const noTranslationMarker = "NO_TRANSLATION";
const char* const defaultLanguage = "English";
const char* const fallbackFullName = "English-GBR";
const char* const catalogSuffix = ".mo";

struct DomainNode {
    DomainNode* prev;
    DomainNode* next;
    nlsDomain* domain;
};

// Circular, with a sentinel; made on the first registration, deleted when found empty on removal.
struct DomainList {
    DomainNode head{&head, &head, nullptr};
    int32_t count = 0;
    DomainNode* cursor = &head;

    DomainNode* find(const nlsDomain* domain)
    {
        for (DomainNode* n = head.next; n != &head; n = n->next)
            if (n->domain == domain)
                return n;
        return nullptr;
    }
};

struct State {
    nlsLanguage requested;
    nlsLanguage systemLanguage;
    int lastCategory = 0;
    uiSaveString defaultDirectory;
    int skipEnvironment = 0;
    int fallbackWarning = 0;
    int localeSet = 0;
    char decimalPoint = '.';
    DomainList* domains = nullptr;
};

// Never destroyed: domains owned by other process-wide records are destroyed during exit, after a
// function-local State would already be gone.
State& state()
{
    static State* s = new State;
    return *s;
}

// The user's language name without its parenthesised region: "English (United Kingdom)" -> "English".
std::string userLanguageName(const platform::UserLocale& user)
{
    return user.englishLanguage.substr(0, user.englishLanguage.find(' '));
}

void report(void* object, uint32_t code, const char* a0 = nullptr, const char* a1 = nullptr, const char* a2 = nullptr)
{
    nlsError error(code);
    for (const char* arg : {a0, a1, a2})
        if (arg)
            error.addArgument(arg);
    nlsDataBase::report(object, error);
}

const char* textOf(const uiSaveString& s)
{
    return s.text() ? s.text() : "";
}

// A message as one line of a report: line ends and other control characters written as escapes.
std::string oneLine(const char* text)
{
    std::string line;
    for (const char* p = text; *p; ++p) {
        unsigned char c = static_cast<unsigned char>(*p);
        if (c == '\n')
            line += "\\n";
        else if (c == '\r')
            line += "\\r";
        else if (c == '\t')
            line += "\\t";
        else if (c < 0x20 || c == 0x7f)
            line += "?";
        else
            line += *p;
    }
    return line;
}

} // namespace

const nlsLanguage& nlsDomainManager::systemLanguage(int category)
{
    State& s = state();
    if (category != s.lastCategory && category != 1)
        s.systemLanguage = nlsLanguage();
    if (s.requested == noTranslationMarker)
        s.systemLanguage = nlsLanguage(fallbackFullName);
    if (s.systemLanguage.empty() && !s.skipEnvironment) {
        for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
            const char* value = std::getenv(name);
            if (value && *value) {
                s.systemLanguage = nlsLanguage(value);
                break;
            }
        }
    }
    if (s.systemLanguage.empty()) {
        platform::UserLocale user = platform::userDefaultLocale();
        std::string name = userLanguageName(user);
        if (category != 3 && user.abbrevLanguage != user.abbrevCountry)
            name += "-" + user.abbrevCountry;
        s.systemLanguage = nlsLanguage(name.c_str());
    }
    s.lastCategory = category;
    return s.systemLanguage;
}

const char* nlsDomainManager::noTranslation()
{
    return noTranslationMarker;
}

const nlsLanguage& nlsDomainManager::requestedLanguage()
{
    return state().requested;
}

void nlsDomainManager::setLanguageForAllDomains(const char* language)
{
    State& s = state();
    // our own copy first: `language` may be the text of the requested or a domain's language, which the
    // assignments below free
    const nlsLanguage wanted(language);
    s.requested = wanted;
    if (s.domains) {
        DomainList& list = *s.domains;
        for (DomainNode* n = list.head.next; n != &list.head; n = n->next)
            if (!(n->domain->language() == wanted.text()))
                setDomainLanguage(n->domain, wanted.text());
    }
    setLocale(0);
}

nlsDomain* nlsDomainManager::createDomain(const char* directory, const char* name)
{
    nlsDomain* domain = new nlsDomain(directory, name);
    registerDomain(domain);
    return domain;
}

uint32_t nlsDomainManager::registerDomain(nlsDomain* domain)
{
    State& s = state();
    uint32_t code = nlsError::None;
    if (!s.domains)
        s.domains = new DomainList;
    DomainList& list = *s.domains;
    if (list.count == 0)
        setLocale(0);
    if (list.find(domain)) {
        code = nlsError::DomainExists;
    } else {
        DomainNode* node = new DomainNode{list.head.prev, &list.head, domain};
        list.head.prev->next = node;
        list.head.prev = node;
        ++list.count;
    }
    if (!s.requested.empty())
        setDomainLanguage(domain, s.requested.text());
    if (code != nlsError::None) {
        report(domain, code, textOf(domain->name()), textOf(domainLanguage(domain)));
    } else if (!domain->loaded()) {
        const uiSaveString& dir = domain->directory().empty() ? s.defaultDirectory : domain->directory();
        searchCatalog(domain, textOf(dir));
    }
    return code;
}

void nlsDomainManager::destroyDomain(nlsDomain* domain)
{
    State& s = state();
    DomainNode* node = s.domains ? s.domains->find(domain) : nullptr;
    if (node) {
        if (s.domains->cursor == node)
            s.domains->cursor = &s.domains->head;
        node->prev->next = node->next;
        node->next->prev = node->prev;
        --s.domains->count;
        delete node;
    } else {
        report(domain, nlsError::NoDomain);
    }
    if (s.domains && s.domains->count == 0) {
        delete s.domains;
        s.domains = nullptr;
    }
    delete domain;
}

int32_t nlsDomainManager::domainCount()
{
    return state().domains ? state().domains->count : 0;
}

const char* nlsDomainManager::translate(const nlsDomain* domain, const char* text)
{
    return domain ? domain->translate(text) : text;
}

const char* nlsDomainManager::translateFormat(const nlsDomain* domain, const char* format)
{
    const nlsDataBase* database = domain ? domain->database() : nullptr;
    if (!database)
        return format;
    bool firstRefusal = false;
    const char* answer = database->translateFormat(format, firstRefusal);
    if (firstRefusal)
        report(const_cast<nlsDomain*>(domain), nlsError::FormatRefused, textOf(database->path()),
               oneLine(format).c_str());
    return answer;
}

nlsLanguage nlsDomainManager::domainLanguage(const nlsDomain* domain)
{
    if (domain && !domain->language().empty())
        return domain->language();
    const nlsLanguage& system = systemLanguage(1);
    return system.empty() ? nlsLanguage("C") : system;
}

int nlsDomainManager::setDomainLanguage(nlsDomain* domain, const char* language)
{
    if (domain->language() == language)
        return 1;
    const uiSaveString& dir = domain->directory().empty() ? state().defaultDirectory : domain->directory();
    domain->releaseDatabase();
    domain->setLoaded(false);
    domain->setLanguage(nlsLanguage(language));
    searchCatalog(domain, textOf(dir));
    if (domain->database() || domain->language() == "C")
        return 1;
    domain->setLanguage(systemLanguage(1));
    domain->setLoaded(false);
    searchCatalog(domain, textOf(dir));
    if (!domain->database())
        domain->setLanguage(nlsLanguage("C"));
    return 0;
}

// Looks for <language>/LC_MESSAGES/<domain>.mo on the domain's directories and NLSPATH, falling back
// from "Language-CTRY" to "Language".
void nlsDomainManager::searchCatalog(nlsDomain* domain, const char* directory)
{
    const char* nlsPath = std::getenv("NLSPATH");
    const bool fromEnvironment = nlsPath && *nlsPath;
    // only an unset NLSPATH stops a search that has no directory; a set one, even empty, lets it run
    // (and warn when nothing is found)
    if (!nlsPath && (!directory || !*directory))
        return;
    nlsSearchPath path;
    if (directory && *directory)
        path.addList(directory, nlsSearchPath::Append);
    if (fromEnvironment)
        path.addList(nlsPath, nlsSearchPath::Append);
    if (domain->language().empty()) {
        const nlsLanguage& system = systemLanguage(1);
        domain->setLanguage(system.empty() ? nlsLanguage("C") : system);
    }
    auto lookFor = [&]() {
        std::string relative = std::string(textOf(domain->language())) + "/LC_MESSAGES/" + textOf(domain->name());
        return path.findWithSuffix(relative.c_str(), catalogSuffix);
    };
    uiSaveString file = lookFor();
    if (file.empty() && domain->language().hasCountry()) {
        domain->setLanguage(domain->language().baseLanguage());
        file = lookFor();
        if (!file.empty() && state().fallbackWarning)
            report(domain, nlsError::FallbackUsed, textOf(domain->name()), textOf(systemLanguage(1)),
                   textOf(domain->language()));
    }
    if (!file.empty()) {
        if (nlsDataBase* shared = nlsDataBase::find(file.text())) {
            domain->setDatabase(shared);
            domain->setLanguage(nlsLanguage());
        } else {
            uint32_t code = 0;
            domain->setDatabase(nlsDataBase::open(file.text(), code));
            report(domain, code);
        }
    }
    if (!domain->database() && !(domain->language() == "C"))
        report(domain, nlsError::CatalogMissing, textOf(domain->name()), textOf(domain->language()));
    domain->setLoaded(true);
}

namespace
{

struct Category {
    int c;
    std::locale::category cpp;
};

// Our numbering is the Windows run-time library's; 4 only names the LC_MESSAGES directory.
Category mapCategory(int category)
{
    switch (category) {
    case 1:
        return {LC_COLLATE, std::locale::collate};
    case 2:
        return {LC_CTYPE, std::locale::ctype};
    case 3:
        return {LC_MONETARY, std::locale::monetary};
    case 4:
        return {LC_NUMERIC, std::locale::numeric};
    case 5:
        return {LC_TIME, std::locale::time};
    default:
        return {LC_ALL, std::locale::all};
    }
}

// The global standard locale: the named one for the category where the standard library knows it,
// always with our number punctuation.
void setStandardLocale(const std::string& name, std::locale::category category)
{
    std::locale base = std::locale();
    try {
        base = std::locale(base, name.c_str(), category);
    } catch (const std::runtime_error&) {
        // the Windows build's standard library knows only "C"; the C library's locale still holds
    }
    std::locale::global(std::locale(base, new nlsNumPunct(name.c_str(), 0)));
}

} // namespace

uint32_t nlsDomainManager::setLocale(int category)
{
    State& s = state();
    const bool off = s.requested == noTranslationMarker;
    const platform::UserLocale user = platform::userDefaultLocale();
    const char* effective = off ? defaultLanguage : textOf(s.requested);
    std::string name;
    if (*effective)
        name = off ? userLanguageName(user) : effective;
    else
        name = textOf(systemLanguage(2));
    if (name == userLanguageName(user) + "-" + user.abbrevCountry)
        name = userLanguageName(user) + "_" + user.abbrevCountry;

    const Category mapped = mapCategory(category);
    nlsError error;
    if (!name.empty()) {
        std::string used = platform::setCLocale(mapped.c, name);
        if (used.empty()) {
            error = nlsError(nlsError::LocaleFailed);
            error.addArgument(name.c_str());
        } else {
            setStandardLocale(used, mapped.cpp);
        }
    } else if (!std::setlocale(mapped.c, "")) {
        error = nlsError(nlsError::LocaleFailed);
        error.addArgument("????");
    }
    char printed[16];
    std::snprintf(printed, sizeof printed, "%2.1f", 1.1);
    s.decimalPoint = printed[1];
    s.localeSet = error.code() == 0;
    ReportHook hook = localeReportHook();
    if (hook && error.code() != 0 && hook(nullptr, error) == 0)
        utAssertionFailed("nls/nlsDomainManager", 706, "nlsDomainManager::setlocale| Failed to set locale");
    return error.code();
}

const char* nlsDomainManager::errorText(const nlsError& error)
{
    return error.text();
}

void nlsDomainManager::printError(const nlsError& error)
{
    error.print();
}

const char* nlsDomainManager::categoryName(int category)
{
    static const char* const names[] = {"LC_ALL", "LC_COLLATE", "LC_CTYPE", "LC_MONETARY", "LC_MESSAGES", "LC_TIME"};
    return category >= 0 && category <= 5 ? names[category] : "LC_XXX";
}

void nlsDomainManager::setSkipEnvironment(int skip)
{
    state().skipEnvironment = skip;
}

void nlsDomainManager::clearSystemLanguage()
{
    state().systemLanguage = nlsLanguage();
}

void nlsDomainManager::setLastCategory(int category)
{
    state().lastCategory = category;
}

void nlsDomainManager::setFallbackWarning(int on)
{
    state().fallbackWarning = on;
}

nlsDomainManager::ReportHook& nlsDomainManager::localeReportHook()
{
    static ReportHook hook = &nlsDomainManager::printLocaleReport;
    return hook;
}

int nlsDomainManager::printLocaleReport(void*, const nlsError& error)
{
    error.print();
    return 1;
}

char nlsDomainManager::decimalPoint()
{
    return state().decimalPoint;
}

bool nlsDomainManager::localeSet()
{
    return state().localeSet != 0;
}
