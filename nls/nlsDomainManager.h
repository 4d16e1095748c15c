// The process-wide state of the catalog library: the registered domains, the language they use, the
// C library's and the standard library's locale, and the reports of problems. One thread only.
#pragma once

#include <cstdint>

#include "nls/nlsDomain.h"
#include "nls/nlsError.h"
#include "nls/nlsLanguage.h"

class nlsDomainManager
{
public:
    using ReportHook = int (*)(void* object, const nlsError& error);

    // The language the system asks for: cached, else LC_ALL, LC_MESSAGES, LANG, else the user's
    // locale ("English-GBR"; the bare name for category 3). Valid until the next call.
    static const nlsLanguage& systemLanguage(int category);
    // The marker that switches translation off.
    static const char* noTranslation();
    static const nlsLanguage& requestedLanguage();

    // Stores the request, re-selects every domain that differs, then sets the locale for category 0.
    static void setLanguageForAllDomains(const char* language);
    // Creates and registers a domain whose catalogs lie below `directory` (";"-separated list).
    static nlsDomain* createDomain(const char* directory, const char* name);
    // Registers a domain, choosing its language and loading its catalog; a domain already registered
    // gives code 17408, reported. Returns the code.
    static uint32_t registerDomain(nlsDomain* domain);
    // Unregisters and deletes a domain (code 129 reported when it was not registered).
    static void destroyDomain(nlsDomain* domain);
    static int32_t domainCount();

    static const char* translate(const nlsDomain* domain, const char* text);
    // The translation of a printf format, or `format` itself when the catalog's translation reads other
    // arguments (warning 66560, once per message and catalog).
    static const char* translateFormat(const nlsDomain* domain, const char* format);
    // The domain's language, else the system language for category 1, else "C".
    static nlsLanguage domainLanguage(const nlsDomain* domain);
    // 1 when a catalog was found for the language (or it is "C"), else 0 after falling back.
    static int setDomainLanguage(nlsDomain* domain, const char* language);
    // Sets the C library's and the standard library's locale; returns an error code.
    static uint32_t setLocale(int category);

    static const char* errorText(const nlsError& error);
    static void printError(const nlsError& error);
    static const char* categoryName(int category);

    static void setSkipEnvironment(int skip);
    static void clearSystemLanguage();
    static void setLastCategory(int category);
    static void setFallbackWarning(int on);
    static ReportHook& localeReportHook();
    static int printLocaleReport(void* object, const nlsError& error);
    // The decimal point of the C library's locale when it was last set, and whether that worked.
    static char decimalPoint();
    static bool localeSet();

private:
    static void searchCatalog(nlsDomain* domain, const char* directory);
};
