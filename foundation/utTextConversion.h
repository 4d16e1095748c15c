// Holders that convert text between UTF-8, UTF-16 and the ANSI code page at the system boundary.
// Invariant: every holder owns a NUL-terminated result (empty for a null input); invalid or
// unrepresentable characters become '?', so the result is always well-formed in its encoding.
#pragma once

#include <cstdio>
#include <string>

#include "foundation/utString.h"

// UTF-8 to UTF-16: a byte up to 0x80 stands for itself; bad sequences, overlong forms, surrogates and
// values above 0x10FFFF become U+003F.
class utUtf8ToUtf16
{
public:
    // length < 0: up to the NUL.
    explicit utUtf8ToUtf16(const char* utf8, int length = -1);
    explicit utUtf8ToUtf16(const utString& utf8) : utUtf8ToUtf16(utf8.text(), utf8.length()) {}
    const char16_t* c_str() const
    {
        return text_.c_str();
    }
    const std::u16string& str() const
    {
        return text_;
    }
    int length() const
    {
        return static_cast<int>(text_.size());
    }
    // Copies at most `size` units and a NUL when room is left; returns the units written with it.
    int copyOut(char16_t* out, int size) const;

private:
    std::u16string text_;
};

// UTF-16 to UTF-8: unpaired surrogates become '?'.
class utUtf16ToUtf8
{
public:
    // length < 0: up to the NUL.
    explicit utUtf16ToUtf8(const char16_t* utf16, int length = -1);
    explicit utUtf16ToUtf8(const std::u16string& utf16) : utUtf16ToUtf8(utf16.c_str(), static_cast<int>(utf16.size()))
    {
    }
    const char* c_str() const
    {
        return text_.c_str();
    }
    const std::string& str() const
    {
        return text_;
    }
    int length() const
    {
        return static_cast<int>(text_.size());
    }
    // An owned utString copy of the result.
    utString toString() const
    {
        return utString::copyOf(text_);
    }
    // Copies at most `size` bytes and a NUL when room is left; returns the bytes written with it.
    int copyOut(char* out, int size) const;

private:
    std::string text_;
};

// An owned UTF-16 copy of a NUL-terminated UTF-16 text.
class utWideCopy
{
public:
    explicit utWideCopy(const char16_t* utf16);
    const char16_t* c_str() const
    {
        return text_.c_str();
    }
    int length() const
    {
        return static_cast<int>(text_.size());
    }
    int copyOut(char16_t* out, int size) const;

private:
    std::u16string text_;
};

// UTF-16 to the ANSI code page (UTF-8 where the system has none); empty and !ok() when refused.
class utUtf16ToAnsi
{
public:
    explicit utUtf16ToAnsi(const char16_t* utf16);
    bool ok() const
    {
        return ok_;
    }
    const char* c_str() const
    {
        return text_.c_str();
    }
    int length() const
    {
        return static_cast<int>(text_.size());
    }
    int copyOut(char* out, int size) const;

private:
    std::string text_;
    bool ok_;
};

// Opens a file by UTF-8 name through the platform's wide-character fopen; null on failure (errno set).
std::FILE* utOpenFile(const char* utf8Name, const char* mode);
