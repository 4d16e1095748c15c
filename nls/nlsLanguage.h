// A language name such as "English" or "English-GBR"; the part after "-" names the country.
#pragma once

#include "nls/uiSaveString.h"

class nlsLanguage : public uiSaveString
{
public:
    nlsLanguage() = default;
    nlsLanguage(const char* text) : uiSaveString(text) {} // NOLINT: implicit like uiSaveString
    nlsLanguage(const char* text, size_t count) : uiSaveString(text, count) {}
    nlsLanguage(const uiSaveString& other) : uiSaveString(other) {} // NOLINT
    ~nlsLanguage() override = default;
    nlsLanguage(const nlsLanguage&) = default;
    nlsLanguage& operator=(const nlsLanguage&) = default;

    bool hasCountry() const;
    // The name before the first "-", without the blanks before it ("English -GBR" gives "English").
    // A name without "-" is returned as it is.
    nlsLanguage baseLanguage() const;
};
