// printf-style formatting of program texts into a utString of any length.
#pragma once

#include <cstdarg>

#include "foundation/utString.h"

// Formats into a buffer that starts at 4192 bytes and doubles until the text fits. `format` is a program
// text, never outside input: the C library would honour any conversion in it.
utString utFormatV(const char* format, va_list args);

utString utFormat(const char* format, ...)
#ifdef __GNUC__
    __attribute__((format(printf, 1, 2)))
#endif
    ;
