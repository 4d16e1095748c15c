// UTF-8 <-> UTF-16 by our own rules (the platform's converters differ on bad input), and the ANSI code
// page through the platform. Invariant: the counting pass and the writing pass decode identically, so
// the output is sized exactly and never written past.
#include "foundation/utTextConversion.h"

#include <cerrno>
#include <cstring>

#include "platform/platform.h"

namespace
{
constexpr char32_t questionMark = 0x3F;

bool isContinuation(unsigned char b)
{
    return (b & 0xC0) == 0x80;
}

// Decodes one character at s[i] (i < n) and returns the index after what it consumed.
int decodeUtf8(const unsigned char* s, int n, int i, char32_t& value)
{
    unsigned char lead = s[i];
    if (lead <= 0x80) {
        value = lead;
        return i + 1;
    }
    int need;
    char32_t least;
    if (lead >= 0xC0 && lead <= 0xDF) {
        need = 1, least = 0x80, value = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        need = 2, least = 0x800, value = lead & 0x0F;
    } else if (lead >= 0xF0 && lead <= 0xF7) {
        need = 3, least = 0x10000, value = lead & 0x07;
    } else {
        // an impossible lead byte swallows the continuation bytes that hang on it
        value = questionMark;
        for (++i; i < n && isContinuation(s[i]); ++i) {
        }
        return i;
    }
    for (int k = 1; k <= need; ++k) {
        if (k > n - 1 - i || !isContinuation(s[i + k])) {
            value = questionMark;
            return i + k;
        }
        value = (value << 6) | (s[i + k] & 0x3F);
    }
    if (value < least || (value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF)
        value = questionMark;
    return i + need + 1;
}

// Runs the decoder over the input; `out` null counts only. Returns the units produced.
size_t utf8ToUtf16(const unsigned char* s, int n, char16_t* out, size_t room)
{
    size_t used = 0;
    for (int i = 0; i < n;) {
        char32_t v;
        i = decodeUtf8(s, n, i, v);
        if (v > 0xFFFF) {
            if (out && room - used < 2) {
                v = questionMark;
            } else {
                if (out) {
                    out[used] = static_cast<char16_t>(0xD800 | ((v - 0x10000) >> 10));
                    out[used + 1] = static_cast<char16_t>(0xDC00 | ((v - 0x10000) & 0x3FF));
                }
                used += 2;
                continue;
            }
        }
        if (out && room - used < 1)
            break;
        if (out)
            out[used] = static_cast<char16_t>(v);
        ++used;
    }
    return used;
}

int encodedLength(char32_t v)
{
    return v < 0x80 ? 1 : v < 0x800 ? 2 : v < 0x10000 ? 3 : 4;
}

// Reads one character at s[i] (i < n) and returns the index after what it consumed.
int decodeUtf16(const char16_t* s, int n, int i, char32_t& value)
{
    char32_t c = s[i];
    if (c >= 0xD800 && c <= 0xDBFF) {
        if (i + 1 < n && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
            value = (c - 0xD800) * 1024 + (s[i + 1] & 0x3FF) + 0x10000;
            return i + 2;
        }
        value = questionMark;
        return i + 1;
    }
    if (c >= 0xDC00 && c <= 0xDFFF) {
        value = questionMark;
        for (++i; i < n && s[i] >= 0xDC00 && s[i] <= 0xDFFF; ++i) {
        }
        return i;
    }
    value = c;
    return i + 1;
}

size_t utf16ToUtf8(const char16_t* s, int n, char* out, size_t room)
{
    size_t used = 0;
    for (int i = 0; i < n;) {
        char32_t v;
        i = decodeUtf16(s, n, i, v);
        size_t len = static_cast<size_t>(encodedLength(v));
        if (out && room - used < len)
            v = questionMark, len = 1;
        if (out && room - used < len)
            break;
        if (out) {
            char* p = out + used;
            if (len == 1) {
                p[0] = static_cast<char>(v);
            } else {
                static const unsigned char leads[] = {0, 0, 0xC0, 0xE0, 0xF0};
                for (size_t k = len - 1; k > 0; --k, v >>= 6)
                    p[k] = static_cast<char>(0x80 | (v & 0x3F));
                p[0] = static_cast<char>(leads[len] | v);
            }
        }
        used += len;
    }
    return used;
}

template <class Char> int copyOutText(const std::basic_string<Char>& text, Char* out, int size)
{
    if (!out || size <= 0)
        return 0;
    size_t n = text.size() < static_cast<size_t>(size) ? text.size() : static_cast<size_t>(size);
    std::memcpy(out, text.data(), n * sizeof(Char));
    if (n < static_cast<size_t>(size))
        out[n++] = Char(0);
    return static_cast<int>(n);
}

int lengthOf(const char16_t* s)
{
    int n = 0;
    while (s[n])
        ++n;
    return n;
}
} // namespace

utUtf8ToUtf16::utUtf8ToUtf16(const char* utf8, int length)
{
    if (!utf8)
        return;
    int n = length < 0 ? static_cast<int>(std::strlen(utf8)) : length;
    auto* bytes = reinterpret_cast<const unsigned char*>(utf8);
    size_t need = utf8ToUtf16(bytes, n, nullptr, 0);
    text_.resize(need);
    text_.resize(utf8ToUtf16(bytes, n, text_.data(), need));
}

int utUtf8ToUtf16::copyOut(char16_t* out, int size) const
{
    return copyOutText(text_, out, size);
}

utUtf16ToUtf8::utUtf16ToUtf8(const char16_t* utf16, int length)
{
    if (!utf16)
        return;
    int n = length < 0 ? lengthOf(utf16) : length;
    size_t need = utf16ToUtf8(utf16, n, nullptr, 0);
    text_.resize(need);
    text_.resize(utf16ToUtf8(utf16, n, text_.data(), need));
}

int utUtf16ToUtf8::copyOut(char* out, int size) const
{
    return copyOutText(text_, out, size);
}

utWideCopy::utWideCopy(const char16_t* utf16)
{
    if (utf16)
        text_.assign(utf16, static_cast<size_t>(lengthOf(utf16)));
}

int utWideCopy::copyOut(char16_t* out, int size) const
{
    return copyOutText(text_, out, size);
}

utUtf16ToAnsi::utUtf16ToAnsi(const char16_t* utf16) : ok_(true)
{
    if (!utf16)
        return;
    ok_ = platform::toAnsiCodePage(std::u16string(utf16), text_);
    if (!ok_)
        text_.clear();
}

int utUtf16ToAnsi::copyOut(char* out, int size) const
{
    return copyOutText(text_, out, size);
}

std::FILE* utOpenFile(const char* utf8Name, const char* mode)
{
    if (!utf8Name || !mode) {
        errno = EINVAL;
        return nullptr;
    }
    utUtf8ToUtf16 name(utf8Name);
    utUtf8ToUtf16 wideMode(mode);
    return platform::fopen(name.c_str(), wideMode.c_str());
}
