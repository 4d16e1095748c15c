// The doubling formatter shared by the output channels and the catalog's translate-and-format.
#include "foundation/utFormat.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

utString utFormatV(const char* format, va_list args)
{
    size_t size = 4192;
    for (;;) {
        char* buffer = static_cast<char*>(std::malloc(size));
        if (!buffer)
            throw std::bad_alloc();
        va_list copy;
        va_copy(copy, args);
        int n = std::vsnprintf(buffer, size, format, copy);
        va_end(copy);
        // some runtimes report a short buffer with -1, others with the needed length
        if (n >= 0 && size_t(n) < size) {
            // every formatted byte, a NUL from "%c" included: the copying constructor would stop there
            utString text = utString::copyOf("");
            text.resize(n);
            std::memcpy(text.writableText(), buffer, size_t(n));
            std::free(buffer);
            return text;
        }
        std::free(buffer);
        size *= 2;
    }
}

utString utFormat(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    utString text = utFormatV(format, args);
    va_end(args);
    return text;
}
