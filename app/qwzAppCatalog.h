// The application's message catalogs: start-up picks the language whose catalog directory exists (or
// switches translation off), and every user-visible text is translated through the domain "quillon".
// Invariant: the domain is created at the first translation and destroyed with the record, and it always
// searches the current catalog directory: a domain made before the directory changed is made afresh.
#pragma once

#include "foundation/utString.h"

class nlsDomain;

class qwzAppCatalog
{
public:
    qwzAppCatalog() = default;
    ~qwzAppCatalog();
    qwzAppCatalog(const qwzAppCatalog&) = delete;
    qwzAppCatalog& operator=(const qwzAppCatalog&) = delete;

    // The directory below which <language>/LC_MESSAGES/quillon.mo lie; set once at start-up.
    static const utString& baseDirectory();
    static void setBaseDirectory(const utString& directory);

    // Chooses the language and loads the catalog.
    void start();
    // Destroys the domain and releases its catalog; the next translation creates it afresh.
    void stop();
    // The program domain's message for an English text, or the text itself.
    utString translate(const char* text);
    // The same for a printf format: a translation that reads other arguments than the English text is
    // not used (the catalog library warns once), so that no catalog can misread the program's arguments.
    utString translateFormat(const char* format);

    const utString& requestedLanguage() const
    {
        return requested_;
    }
    const utString& usedLanguage() const
    {
        return used_;
    }

private:
    // The domain of the current base directory, made on first use.
    nlsDomain* domain();

    nlsDomain* domain_ = nullptr;
    // The base directory's generation the domain was made in.
    unsigned domainBase_ = 0;
    utString requested_;
    utString used_;
};

// The process-wide record, destroyed at exit.
qwzAppCatalog& qwzTheAppCatalog();

// The translation of an English text through the process-wide record.
utString translate(const char* english);
// The translation of an English printf format through the process-wide record, or the English format
// when the translation would read other arguments.
utString translatedFormat(const char* english);
// Translates, then formats printf-style into a buffer of 4192 bytes that doubles until the text fits.
utString translateFormat(const char* english, ...);
