// Catalog start-up and translation for the application. The domain "quillon" is created lazily so that
// the start-up's wake-up message, not the first real one, pays for loading the catalog.
#include "app/qwzAppCatalog.h"

#include <cstdarg>
#include <cstdio>
#include <vector>

#include "foundation/utPath.h"
#include "nls/nlsDomainManager.h"

namespace
{

#ifdef _WIN32
const char* const separator = "\\";
#else
const char* const separator = "/"; // the native build's test runs; Windows takes both
#endif

utString& base()
{
    static utString directory;
    return directory;
}

bool catalogDirectoryExists(const utString& language)
{
    if (language.isEmpty())
        return false;
    return utIsDirectory(utString::copyOf(base().str() + separator + language.str()));
}

} // namespace

const utString& qwzAppCatalog::baseDirectory()
{
    return base();
}

void qwzAppCatalog::setBaseDirectory(const utString& directory)
{
    base() = utString::copyOf(directory.str());
}

qwzAppCatalog::~qwzAppCatalog()
{
    if (domain_)
        nlsDomainManager::destroyDomain(domain_);
}

void qwzAppCatalog::start()
{
    requested_ = utString::copyOf(nlsDomainManager::systemLanguage(1).text());
    if (catalogDirectoryExists(requested_)) {
        used_ = requested_;
    } else {
        utString bare = utString::copyOf(nlsDomainManager::systemLanguage(3).text());
        if (catalogDirectoryExists(bare)) {
            used_ = bare;
        } else {
            nlsDomainManager::setSkipEnvironment(0);
            nlsDomainManager::clearSystemLanguage();
            nlsDomainManager::setLastCategory(0);
            nlsDomainManager::setLanguageForAllDomains(nlsDomainManager::noTranslation());
            used_ = utString::copyOf("English"); // the resources' own texts are English
        }
    }
    translate("This string has no translation, it is only to wake up the nls system");
}

utString qwzAppCatalog::translate(const char* text)
{
    if (!domain_)
        domain_ = nlsDomainManager::createDomain(base().c_str(), "quillon");
    return utString::copyOf(nlsDomainManager::translate(domain_, text));
}

qwzAppCatalog& qwzTheAppCatalog()
{
    static qwzAppCatalog record;
    return record;
}

utString translate(const char* english)
{
    return qwzTheAppCatalog().translate(english);
}

utString translateFormat(const char* english, ...)
{
    utString format = translate(english);
    std::vector<char> buffer(4192);
    for (;;) {
        va_list args;
        va_start(args, english);
        int n = std::vsnprintf(buffer.data(), buffer.size(), format.c_str(), args);
        va_end(args);
        if (n >= 0 && size_t(n) < buffer.size())
            return utString::copyOf(buffer.data());
        if (buffer.size() > (size_t(1) << 30))
            return utString::copyOf(""); // a format that can never fit
        buffer.resize(buffer.size() * 2);
    }
}
