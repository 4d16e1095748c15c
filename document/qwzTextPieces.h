// Cutting a UTF-8 text into the pieces in which it is appended to the edit view. A cut never falls inside
// a UTF-8 character nor between a CR and the LF after it, so that converting each piece on its own (a CR
// put before every lone LF, then UTF-16) gives exactly what converting the whole text gives.
#pragma once

#include <cstddef>

class qwzTextPieces
{
public:
    // The length in bytes of the piece that begins `text` (`length` bytes), for a wanted size of `wanted`
    // bytes: all of it when it fits; else up to the last line end in the second half of the wanted size;
    // else (a line longer than that) at the last character boundary that fits. Never more than `wanted`,
    // except that a non-empty text always gives at least its first character (a CR-LF pair counts as one,
    // and bytes that are not UTF-8 count with the character they follow).
    static std::size_t cut(const char* text, std::size_t length, std::size_t wanted);
};
