// The strict UTF-8 check the fuzzers hold their outputs to: shortest forms, no surrogates, nothing above
// U+10FFFF (NUL is a character like any other here).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

inline bool validUtf8(const std::string& s)
{
    size_t i = 0;
    while (i < s.size()) {
        unsigned char b = static_cast<unsigned char>(s[i]);
        int need = b < 0x80 ? 0 : (b & 0xE0) == 0xC0 ? 1 : (b & 0xF0) == 0xE0 ? 2 : (b & 0xF8) == 0xF0 ? 3 : -1;
        if (need < 0 || need > static_cast<int>(s.size() - i - 1))
            return false;
        uint32_t v = need == 0 ? b : need == 1 ? (b & 0x1F) : need == 2 ? (b & 0x0F) : (b & 0x07);
        for (int k = 1; k <= need; ++k) {
            unsigned char c = static_cast<unsigned char>(s[i + static_cast<size_t>(k)]);
            if ((c & 0xC0) != 0x80)
                return false;
            v = (v << 6) | (c & 0x3F);
        }
        static const uint32_t least[] = {0, 0x80, 0x800, 0x10000};
        if (v < least[need] || (v >= 0xD800 && v <= 0xDFFF) || v > 0x10FFFF)
            return false;
        i += static_cast<size_t>(need) + 1;
    }
    return true;
}
