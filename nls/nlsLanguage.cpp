// Cutting a language name down to its language part.
#include "nls/nlsLanguage.h"

#include <cctype>
#include <cstring>

bool nlsLanguage::hasCountry() const
{
    return text() && std::strchr(text(), '-');
}

nlsLanguage nlsLanguage::baseLanguage() const
{
    const char* name = text();
    const char* dash = name ? std::strchr(name, '-') : nullptr;
    if (!dash)
        return *this;
    const char* end = dash;
    while (end > name && std::isspace(static_cast<unsigned char>(end[-1])))
        --end;
    if (end == name)
        return nlsLanguage();
    return nlsLanguage(name, size_t(end - name));
}
