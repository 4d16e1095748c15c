// Catalog start-up and translation for the application. The domain "quillon" is created lazily so that
// the start-up's wake-up message, not the first real one, pays for loading the catalog.
#include "app/qwzAppCatalog.h"

#include "foundation/utFormat.h"

#include <cstdarg>
#include <cstdio>

#include "foundation/utPath.h"
#include "nls/nlsDomainManager.h"
#include "nls/nlsSearchPath.h"

namespace
{

// Windows takes "/" as well as "\\"; the native build's test runs take only "/"
const char* const separator = "/";

utString& base()
{
    static utString directory;
    return directory;
}

// Counts the changes of the base directory.
unsigned baseGeneration = 0;

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
    if (base().str() == directory.str())
        return;
    base() = utString::copyOf(directory.str());
    ++baseGeneration;
}

qwzAppCatalog::~qwzAppCatalog()
{
    stop();
}

void qwzAppCatalog::stop()
{
    if (domain_)
        nlsDomainManager::destroyDomain(domain_);
    domain_ = nullptr;
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

nlsDomain* qwzAppCatalog::domain()
{
    if (domain_ && domainBase_ != baseGeneration)
        stop();
    if (!domain_) {
        // the installation directory may hold ";", which would otherwise split it into two
        domain_ = nlsDomainManager::createDomain(nlsSearchPath::listOf(base().c_str()).c_str(), "quillon");
        domainBase_ = baseGeneration;
    }
    return domain_;
}

utString qwzAppCatalog::translate(const char* text)
{
    // the empty key is the catalog's header, never a message
    if (!text || !*text)
        return utString::copyOf("");
    return utString::copyOf(nlsDomainManager::translate(domain(), text));
}

utString qwzAppCatalog::translateFormat(const char* format)
{
    if (!format || !*format)
        return utString::copyOf("");
    return utString::copyOf(nlsDomainManager::translateFormat(domain(), format));
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

utString translatedFormat(const char* english)
{
    return qwzTheAppCatalog().translateFormat(english);
}

utString translateFormat(const char* english, ...)
{
    utString format = translatedFormat(english);
    va_list args;
    va_start(args, english);
    utString text = utFormatV(format.c_str(), args);
    va_end(args);
    return text;
}
