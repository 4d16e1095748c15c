// Fuzzes utString::toInteger: any bytes give a consistent answer, and a success parses back.
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "foundation/utString.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string bytes(reinterpret_cast<const char*>(data), size);
    utString text(bytes.c_str(), static_cast<int>(size));
    int value = 12345, position = 12345;
    bool ok = text.toInteger(value, position);
    if (ok) {
        if (position != -1)
            std::abort();
        char back[16];
        std::snprintf(back, sizeof back, "%d", value);
        int again = 0, againPosition = 0;
        if (!utString(back).toInteger(again, againPosition) || again != value)
            std::abort();
    } else if (position < -1 || position > text.length()) {
        std::abort();
    } else if (position >= 0 && position < text.length() && text.length() > 0) {
        // the reported character is one the conversion could not take
        char c = text.text()[position];
        if (c == ' ' || c == '\t' || c == '\n')
            std::abort();
    }
    return 0;
}
