// utString: 8-bit text (UTF-8 where it carries names or output) shared between copies by a count.
// Invariant: a text is freed exactly once, by its last holder; borrowed texts are never freed, and a
// string copies its text before any change unless it is the text's only holder.
#pragma once

#include <cstdint>
#include <string>

class utString
{
public:
    // The null string: no text, length 0 (distinct from the empty text "").
    utString();
    // Borrows `text` without copying; the caller keeps it alive. A null pointer gives the null string.
    utString(const char* text);
    // Copies at most n characters of `text`, stopping at a NUL; null pointer or n < 0 gives the null string.
    utString(const char* text, int n);
    // n copies of `c`; a NUL character or n < 0 gives the null string.
    utString(char c, int n);
    // An owned copy of a NUL-terminated text (the null string for a null pointer).
    static utString copyOf(const char* text);
    // An owned copy of the bytes of `s` up to its first NUL.
    static utString copyOf(const std::string& s);

    // Copies share the text; assigning a string to itself changes nothing.
    utString(const utString& other);
    utString& operator=(const utString& other);
    ~utString();

    // The text, null for the null string.
    const char* text() const
    {
        return text_;
    }
    // The text, "" for the null string: safe to hand to C library calls.
    const char* c_str() const
    {
        return text_ ? text_ : "";
    }
    int length() const
    {
        return length_;
    }
    bool isNull() const
    {
        return text_ == nullptr;
    }
    // True for the null string and for the empty text.
    bool isEmpty() const
    {
        return length_ == 0;
    }
    // The text as a std::string ("" for the null string).
    std::string str() const
    {
        return text_ ? std::string(text_, static_cast<size_t>(length_)) : std::string();
    }
    // The text for writing: copied first unless this string is its only holder; null for the null string.
    char* writableText();

    // Null equals null only; otherwise byte-wise up to and including the NUL.
    friend bool operator==(const utString& a, const utString& b);
    friend bool operator!=(const utString& a, const utString& b)
    {
        return !(a == b);
    }
    // Difference of the first differing characters after ASCII lowering (taken as signed);
    // null vs null 0, null vs text -1, text vs null 1.
    int compareNoCase(const utString& other) const;
    // Index of the first occurrence of `sub`, or -1 (either null, `sub` longer, or no match).
    int find(const utString& sub) const;

    // Text from index i to the end; null when this is null or i is outside 0..length.
    utString tail(int i) const;
    // count characters from start; null when this is null, start or count < 0, or past the end.
    utString substring(int start, int count) const;
    // A copy of a with b appended; a null a gives the null string whatever b is.
    friend utString operator+(const utString& a, const utString& b);
    // A null string becomes a shared copy of `other`; otherwise `other` is appended.
    utString& operator+=(const utString& other);
    // Appends `other`; nothing happens when either text is null.
    void append(const utString& other);
    // Without the leading (trailing) characters found in the NUL-terminated `set`.
    utString stripLeading(const char* set) const;
    utString stripTrailing(const char* set) const;
    // Removes count characters at start when 0 <= start, count > 0 and start + count <= length.
    void remove(int start, int count);
    // Strips leading delimiters and cuts the next token off the front: `token` gets it and this string
    // keeps the rest from the delimiter on. Returns false (token null) when nothing but delimiters is left.
    bool nextToken(const char* delimiters, utString& token);
    // Makes the text n characters long (n >= 0, text not null); bytes past the old text are zero.
    void resize(int n);

    // Base-10 integer of the whole text, trailing white space allowed. On failure `errorPosition` is the
    // index of the first unconverted character (0 for a null or empty text), else -1. A value outside
    // the 32-bit range fails as a range error.
    bool toInteger(int& value, int& errorPosition) const;

    // The bytes folded into the four lanes of a 32-bit word; 0 for a null text or length < 1.
    static uint32_t hash(const char* text, int length);
    uint32_t hash() const
    {
        return hash(text_, length_);
    }

private:
    void takeShare() const;
    // Gives up this holder's share; true when the caller must free the text.
    bool releaseShare();
    void release();
    // Copies the text unless this string is its only holder.
    void own();
    static char* allocate(int n);
    void adopt(char* text, int length);

    char* text_;
    int32_t length_;
    // A static marker (borrowed, sole owner) or a heap count of the holders of one owned text.
    mutable int32_t* share_;
};
