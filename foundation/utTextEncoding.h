// The encodings a text file is read and written in: which one a file's first bytes show, an incremental
// decoder to UTF-8 and the encoder back. Invariant: the decoder's output is the same however its input is
// split between calls, and for UTF-16 it is always valid UTF-8 (U+FFFD stands for what cannot be decoded).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

enum class utEncoding { Utf8, Utf8Bom, Utf16LE, Utf16BE };

struct utTextProbe {
    bool isText;
    utEncoding encoding;
    // Bytes of the byte-order mark at the start of the file (0, 2 or 3); the decoder starts after them.
    std::size_t markLength;
};

// What the first bytes of a file are (at most the first 64 KiB are looked at; `size` is the whole file's
// size when the caller has it all, since a BOM-less UTF-16 file must be of even length). A mark decides
// the encoding; without one, UTF-16 is taken only on unambiguous evidence; anything else is UTF-8. Not
// text: NUL bytes (or NUL units in UTF-16) in what was looked at.
utTextProbe utProbeText(const char* bytes, std::size_t size);

class utTextDecoder
{
public:
    explicit utTextDecoder(utEncoding encoding);

    // Decodes the next bytes of the file (after the mark) and appends UTF-8 to `out`; an incomplete last
    // character (odd byte, lone high surrogate at the end, partial UTF-8 sequence) is held back for the
    // next call. UTF-8 passes through unchanged: invalid sequences are left to the edit text's conversion.
    void decode(const char* bytes, std::size_t size, std::string& out);
    // The held-back rest at the end of the file: U+FFFD for UTF-16, the bytes as they are for UTF-8.
    void finish(std::string& out);
    // False once anything was replaced (the text is "shown otherwise").
    bool exact() const
    {
        return exact_;
    }

private:
    void decodeUtf16(const unsigned char* bytes, std::size_t size, std::string& out);
    // Writes what unit `u` completes at `p` and moves past it.
    void unit(char16_t u, char*& p);
    void replace(char*& p);

    utEncoding encoding_;
    bool exact_ = true;
    // The held-back bytes of a partial UTF-8 sequence (at most 3) or the odd byte of a UTF-16 unit.
    unsigned char held_[3] = {};
    std::size_t heldCount_ = 0;
    // A high surrogate waiting for its low half; 0 when none.
    char16_t high_ = 0;
};

// The bytes to save `units` as, mark included (none for Utf8). UTF-16 units are written as they are; for
// UTF-8 an unpaired surrogate becomes '?', as every UTF-16 to UTF-8 conversion of the house does.
std::string utEncodeText(std::u16string_view units, utEncoding encoding);
