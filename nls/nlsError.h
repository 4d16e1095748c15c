// An error of the catalog library: a code and up to five argument strings. Codes with bit 0 set are
// errors, the others warnings.
#pragma once

#include <cstdint>

#include "nls/uiSaveString.h"

class nlsError
{
public:
    enum : uint32_t {
        None = 0,
        InitFailed = 5,
        CannotStat = 9,
        CannotOpen = 17,
        BadMagic = 33,
        BadRevision = 65,
        NoDomain = 129,
        NoMemory = 257,
        Corrupt = 513,
        LocaleFailed = 3072,
        CatalogMissing = 5120,
        PathFailed = 9216,
        DomainExists = 17408,
        FallbackUsed = 33792,
        FormatRefused = 66560,
    };

    explicit nlsError(uint32_t code = None) : code_(code) {}

    uint32_t code() const
    {
        return code_;
    }
    void setCode(uint32_t code)
    {
        code_ = code;
    }
    int32_t argumentCount() const
    {
        return count_;
    }
    // A sixth argument is ignored.
    void addArgument(const char* text);
    // Outside 0..count-1: a shared string "Internal range error".
    const uiSaveString& argument(int32_t i) const;

    bool isError() const
    {
        return (code_ & 1) != 0;
    }
    // "NLS Error: ..." or "NLS Warning: ..."; valid until the next call.
    const char* text() const;
    // The text and a line end on standard output.
    void print() const;

private:
    uint32_t code_;
    uiSaveString args_[5];
    int32_t count_ = 0;
};

// Writes a formatted message to standard output and flushes it; nothing for an empty result.
void nlsPrintMessage(const char* format, ...);
