// Byte-order marks, BOM-less UTF-16 evidence, and UTF-16 decoding with U+FFFD. Invariant: the decoder's
// state between calls is only what the next bytes can still complete (an odd byte, a high surrogate, a
// partial UTF-8 sequence), so any split of the input gives the same output as one call.
#include "foundation/utTextEncoding.h"

#include <cstring>

#include "foundation/utTextConversion.h"

namespace
{
constexpr std::size_t probeWindow = 64 * 1024;
constexpr char32_t replacement = 0xFFFD;

bool hasMark(const unsigned char* b, std::size_t size, const char* mark, std::size_t length)
{
    return size >= length && std::memcmp(b, mark, length) == 0;
}

bool isHigh(char16_t u)
{
    return u >= 0xD800 && u <= 0xDBFF;
}

bool isLow(char16_t u)
{
    return u >= 0xDC00 && u <= 0xDFFF;
}

char16_t unitAt(const unsigned char* b, bool bigEndian)
{
    return static_cast<char16_t>(bigEndian ? (b[0] << 8) | b[1] : b[0] | (b[1] << 8));
}

// Whether whole units in b[0, size) include a NUL one.
bool hasNulUnit(const unsigned char* b, std::size_t size)
{
    for (std::size_t i = 0; size - i >= 2; i += 2)
        if (b[i] == 0 && b[i + 1] == 0)
            return true;
    return false;
}

// BOM-less UTF-16 only when every character of the window is below U+0100 and none is NUL: a NUL at
// every high-byte offset and at no low-byte one. An 8-bit text has no NUL and never passes; a binary
// file almost never keeps the pattern for 64 KiB.
bool looksLikeUtf16(const unsigned char* b, std::size_t size, bool bigEndian)
{
    if (size == 0 || size % 2 != 0)
        return false;
    std::size_t window = size < probeWindow ? size : probeWindow;
    std::size_t high = bigEndian ? 0 : 1;
    for (std::size_t i = 0; i < window; ++i)
        if ((b[i] == 0) != (i % 2 == high))
            return false;
    return true;
}

// Writes `v` as UTF-8 at `p` and moves past it.
void putUtf8(char32_t v, char*& p)
{
    if (v < 0x80) {
        *p++ = static_cast<char>(v);
    } else if (v < 0x800) {
        *p++ = static_cast<char>(0xC0 | (v >> 6));
        *p++ = static_cast<char>(0x80 | (v & 0x3F));
    } else if (v < 0x10000) {
        *p++ = static_cast<char>(0xE0 | (v >> 12));
        *p++ = static_cast<char>(0x80 | ((v >> 6) & 0x3F));
        *p++ = static_cast<char>(0x80 | (v & 0x3F));
    } else {
        *p++ = static_cast<char>(0xF0 | (v >> 18));
        *p++ = static_cast<char>(0x80 | ((v >> 12) & 0x3F));
        *p++ = static_cast<char>(0x80 | ((v >> 6) & 0x3F));
        *p++ = static_cast<char>(0x80 | (v & 0x3F));
    }
}

// Continuation bytes a UTF-8 lead byte announces, by the house decoder's reading (0 for a byte that is
// no lead of a longer sequence).
std::size_t continuationsOf(unsigned char lead)
{
    if (lead >= 0xC0 && lead <= 0xDF)
        return 1;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 2;
    if (lead >= 0xF0 && lead <= 0xF7)
        return 3;
    return 0;
}
} // namespace

utTextProbe utProbeText(const char* bytes, std::size_t size)
{
    const unsigned char* b = reinterpret_cast<const unsigned char*>(bytes);
    std::size_t window = size < probeWindow ? size : probeWindow;
    if (hasMark(b, size, "\xEF\xBB\xBF", 3))
        return {std::memchr(b + 3, 0, window - 3) == nullptr, utEncoding::Utf8Bom, 3};
    if (hasMark(b, size, "\xFF\xFE", 2))
        return {!hasNulUnit(b + 2, window - 2), utEncoding::Utf16LE, 2};
    if (hasMark(b, size, "\xFE\xFF", 2))
        return {!hasNulUnit(b + 2, window - 2), utEncoding::Utf16BE, 2};
    if (looksLikeUtf16(b, size, false))
        return {true, utEncoding::Utf16LE, 0};
    if (looksLikeUtf16(b, size, true))
        return {true, utEncoding::Utf16BE, 0};
    return {size == 0 || std::memchr(b, 0, window) == nullptr, utEncoding::Utf8, 0};
}

utTextDecoder::utTextDecoder(utEncoding encoding) : encoding_(encoding) {}

void utTextDecoder::decode(const char* bytes, std::size_t size, std::string& out)
{
    if (encoding_ == utEncoding::Utf16LE || encoding_ == utEncoding::Utf16BE) {
        decodeUtf16(reinterpret_cast<const unsigned char*>(bytes), size, out);
        return;
    }
    std::size_t start = out.size();
    out.append(reinterpret_cast<const char*>(held_), heldCount_);
    out.append(bytes, size);
    heldCount_ = 0;
    // walk back over at most three continuation bytes of this call's text to the lead that starts them
    std::size_t lead = out.size();
    while (lead > start && out.size() - lead < 4) {
        --lead;
        unsigned char b = static_cast<unsigned char>(out[lead]);
        if ((b & 0xC0) != 0x80)
            break;
    }
    if (lead == out.size())
        return;
    unsigned char b = static_cast<unsigned char>(out[lead]);
    std::size_t have = out.size() - lead - 1;
    if ((b & 0xC0) != 0x80 && continuationsOf(b) > have) {
        heldCount_ = out.size() - lead;
        std::memcpy(held_, out.data() + lead, heldCount_);
        out.resize(lead);
    }
}

void utTextDecoder::decodeUtf16(const unsigned char* bytes, std::size_t size, std::string& out)
{
    bool bigEndian = encoding_ == utEncoding::Utf16BE;
    // room for the worst case, written through a pointer: a unit gives at most 3 bytes, but the first one
    // 6 when it ends a held high surrogate without completing it (U+FFFD, then itself)
    std::size_t start = out.size();
    out.resize(start + (size / 2 + 2) * 3);
    char* p = out.data() + start;
    std::size_t i = 0;
    if (heldCount_ == 1 && size > 0) {
        unsigned char pair[2] = {held_[0], bytes[0]};
        unit(unitAt(pair, bigEndian), p);
        heldCount_ = 0;
        i = 1;
    }
    for (; size - i >= 2; i += 2) {
        char16_t u = unitAt(bytes + i, bigEndian);
        if (u < 0x80 && high_ == 0)
            *p++ = static_cast<char>(u);
        else
            unit(u, p);
    }
    if (i < size) {
        held_[0] = bytes[i];
        heldCount_ = 1;
    }
    out.resize(static_cast<std::size_t>(p - out.data()));
}

void utTextDecoder::unit(char16_t u, char*& p)
{
    if (high_ != 0) {
        char16_t high = high_;
        high_ = 0;
        if (isLow(u)) {
            putUtf8(0x10000 + ((static_cast<char32_t>(high) - 0xD800) << 10) + (u - 0xDC00), p);
            return;
        }
        replace(p);
    }
    if (isHigh(u))
        high_ = u;
    else if (isLow(u))
        replace(p);
    else
        putUtf8(u, p);
}

void utTextDecoder::replace(char*& p)
{
    putUtf8(replacement, p);
    exact_ = false;
}

void utTextDecoder::finish(std::string& out)
{
    if (encoding_ == utEncoding::Utf8 || encoding_ == utEncoding::Utf8Bom) {
        out.append(reinterpret_cast<const char*>(held_), heldCount_);
        heldCount_ = 0;
        return;
    }
    char rest[6];
    char* p = rest;
    if (high_ != 0) {
        high_ = 0;
        replace(p);
    }
    if (heldCount_ != 0) {
        heldCount_ = 0;
        replace(p);
    }
    out.append(rest, static_cast<std::size_t>(p - rest));
}

std::string utEncodeText(std::u16string_view units, utEncoding encoding)
{
    std::string out;
    if (encoding == utEncoding::Utf16LE || encoding == utEncoding::Utf16BE) {
        bool bigEndian = encoding == utEncoding::Utf16BE;
        out.reserve(2 + 2 * units.size());
        out += bigEndian ? "\xFE\xFF" : "\xFF\xFE";
        for (char16_t u : units) {
            char high = static_cast<char>(u >> 8), low = static_cast<char>(u & 0xFF);
            out += bigEndian ? high : low;
            out += bigEndian ? low : high;
        }
        return out;
    }
    if (encoding == utEncoding::Utf8Bom)
        out += "\xEF\xBB\xBF";
    // the house converter counts in int: pieces well inside it, never ending between a surrogate pair
    constexpr std::size_t piece = std::size_t(1) << 30;
    for (std::size_t at = 0; at < units.size();) {
        std::size_t n = units.size() - at < piece ? units.size() - at : piece;
        if (n == piece && isHigh(units[at + n - 1]))
            --n;
        out += utUtf16ToUtf8(units.data() + at, static_cast<int>(n)).str();
        at += n;
    }
    return out;
}
