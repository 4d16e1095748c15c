// The arguments a printf format reads, as the C library takes them. A translation is only fit to format
// the program's arguments when it reads exactly what its English text reads, in the same order.
#pragma once

#include <cstdint>
#include <vector>

class nlsPrintfFormat
{
public:
    // What one conversion (or one "*" width or precision) takes from the argument list. Conversions
    // that read the same type are the same argument: %d and %i, %x and %u, %f and %g.
    enum Argument : uint8_t {
        Int,
        UnsignedInt,
        Long,
        UnsignedLong,
        LongLong,
        UnsignedLongLong,
        IntMax,
        UnsignedIntMax,
        Size,
        SignedSize,
        PtrDiff,
        Double,
        LongDouble,
        Char,
        WideChar,
        String,
        WideString,
        Pointer,
    };

    // The arguments of `format`, in order. False for what the program never formats with: %n, a
    // numbered argument ("%1$s"), a flag, length or conversion letter outside C's, or a "%" at the end.
    static bool arguments(const char* format, std::vector<Argument>& out);

    // True when `translation` reads the arguments of `english` (number, order and types) and holds no
    // conversion that arguments() refuses.
    static bool sameArguments(const char* english, const char* translation);
};
