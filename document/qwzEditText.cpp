// UTF-8 to edit-control text. Decoding follows the foundation's rules: a byte up to 0x80 stands for
// itself; a bad sequence, overlong form, surrogate or value above 0x10FFFF gives '?'; a byte that breaks
// a sequence is not swallowed, so an LF after a cut sequence still gets its CR.
#include "document/qwzEditText.h"

#include <new>

namespace
{

// Continuation bytes a lead byte announces; -1 for a byte that starts no sequence.
int continuationCount(unsigned char b)
{
    if (b <= 0x80)
        return 0;
    if (b < 0xC0 || b >= 0xF8)
        return -1;
    return b < 0xE0 ? 1 : (b < 0xF0 ? 2 : 3);
}

bool isContinuation(unsigned char b)
{
    return (b & 0xC0) == 0x80;
}

// Decodes one character at `in` (at least one byte left). Returns the bytes consumed and sets `value`
// (0xFFFFFFFF for '?').
std::size_t decode(const unsigned char* in, std::size_t left, unsigned& value)
{
    static constexpr unsigned minimum[4] = {0, 0x80, 0x800, 0x10000};
    unsigned char lead = in[0];
    int count = continuationCount(lead);
    if (count == 0) {
        value = lead;
        return 1;
    }
    value = 0xFFFFFFFF;
    std::size_t used = 1;
    if (count < 0) {
        while (used < left && isContinuation(in[used]))
            ++used;
        return used;
    }
    unsigned v = lead & (0x3F >> count);
    for (int i = 0; i < count; ++i) {
        if (used == left || !isContinuation(in[used]))
            return used;
        v = (v << 6) | (in[used++] & 0x3F);
    }
    if (v >= minimum[count] && (v < 0xD800 || v > 0xDFFF) && v <= 0x10FFFF)
        value = v;
    return used;
}

} // namespace

std::size_t qwzEditText::crCount(const char* utf8, std::size_t length)
{
    std::size_t crs = 0;
    for (std::size_t i = 0; i < length; ++i)
        if (utf8[i] == '\n' && (i == 0 || utf8[i - 1] != '\r'))
            ++crs;
    return crs;
}

std::size_t qwzEditText::crlfCopy(const char* utf8, std::size_t length, char* out)
{
    std::size_t w = 0;
    for (std::size_t i = 0; i < length; ++i) {
        if (utf8[i] == '\n' && (i == 0 || utf8[i - 1] != '\r'))
            out[w++] = '\r';
        out[w++] = utf8[i];
    }
    return w;
}

std::size_t qwzEditText::unitCount(const char* utf8, std::size_t length, bool* exact)
{
    bool roundTrips = true;
    if (exact)
        *exact = true;
    if (utf8 == nullptr)
        return 0;
    const auto* in = reinterpret_cast<const unsigned char*>(utf8);
    std::size_t units = 0;
    std::size_t i = 0;
    while (i < length) {
        unsigned char b = in[i];
        if (b < 0x80) {
            // the common case: ASCII, and the only bytes that can be LF
            units += (b == '\n' && (i == 0 || in[i - 1] != '\r')) ? 2 : 1;
            ++i;
            continue;
        }
        unsigned value;
        i += decode(in + i, length - i, value);
        units += (value != 0xFFFFFFFF && value > 0xFFFF) ? 2 : 1;
        // a lone 0x80 stands for U+0080, which is written back as two bytes
        roundTrips = roundTrips && value != 0xFFFFFFFF && b != 0x80;
    }
    if (exact)
        *exact = roundTrips;
    return units;
}

bool qwzEditText::assign(const char* utf8, std::size_t length, std::size_t limit)
{
    clear();
    std::size_t units = unitCount(utf8, length);
    if (units == 0)
        return true;
    if (units > limit || units > maxUnits)
        return false;
    units_.reset(new (std::nothrow) char16_t[units + 1]);
    if (!units_)
        return false;
    size_ = convert(utf8, length, units_.get());
    return true;
}

std::size_t qwzEditText::convert(const char* utf8, std::size_t length, char16_t* out)
{
    char16_t* const first = out;
    const auto* in = reinterpret_cast<const unsigned char*>(utf8);
    std::size_t i = 0;
    while (utf8 != nullptr && i < length) {
        unsigned char b = in[i];
        if (b < 0x80) {
            if (b == '\n' && (i == 0 || in[i - 1] != '\r'))
                *out++ = u'\r';
            *out++ = b;
            ++i;
            continue;
        }
        unsigned value;
        i += decode(in + i, length - i, value);
        if (value == 0xFFFFFFFF) {
            *out++ = u'?';
        } else if (value > 0xFFFF) {
            value -= 0x10000;
            *out++ = static_cast<char16_t>(0xD800 | (value >> 10));
            *out++ = static_cast<char16_t>(0xDC00 | (value & 0x3FF));
        } else {
            *out++ = static_cast<char16_t>(value);
        }
    }
    *out = 0;
    return static_cast<std::size_t>(out - first);
}

void qwzEditText::clear()
{
    units_.reset();
    size_ = 0;
}
