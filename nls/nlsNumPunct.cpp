// The facet copies what it needs at construction, so it never depends on the locale it was built from.
#include "nls/nlsNumPunct.h"

#include <clocale>
#include <stdexcept>

nlsNumPunct::nlsNumPunct(const char* localeName, size_t refs) : std::numpunct<char>(refs)
{
    try {
        std::locale named(localeName && *localeName ? localeName : "C");
        const auto& punct = std::use_facet<std::numpunct<char>>(named);
        decimalPoint_ = punct.decimal_point();
        trueName_ = punct.truename();
        falseName_ = punct.falsename();
        return;
    } catch (const std::runtime_error&) {
        // the standard library of the Windows build knows only "C": the C library's locale speaks
    }
    const std::lconv* conv = std::localeconv();
    if (conv && conv->decimal_point && conv->decimal_point[0])
        decimalPoint_ = conv->decimal_point[0];
}
