// Translation without catalogs: every text stands for itself.
#include "app/qwzAppCatalog.h"

#include <cstdarg>

#include "document/qwzOutput.h"

void qwzStartCatalogs(const utString&) {}

utString translate(const char* english)
{
    return utString::copyOf(english);
}

utString translateFormat(const char* english, ...)
{
    va_list args;
    va_start(args, english);
    utString text = qwzFormat(translate(english).c_str(), args);
    va_end(args);
    return text;
}
