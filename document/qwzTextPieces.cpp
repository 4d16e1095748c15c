// Piece boundaries. Invalid UTF-8 needs no care of its own: the converter turns every byte that does not
// belong to a whole sequence into a character of its own, so a cut beside a stray byte changes nothing.
#include "document/qwzTextPieces.h"

#include <cstring>

namespace
{

bool continuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The longest UTF-8 sequence has three continuation bytes.
constexpr std::size_t maxContinuation = 3;

// The end of the character (or CR-LF pair) that begins `text`.
std::size_t firstCharacter(const char* text, std::size_t length)
{
    if (length >= 2 && text[0] == '\r' && text[1] == '\n')
        return 2;
    std::size_t end = 1;
    while (end < length && end <= maxContinuation && continuation(text[end]))
        ++end;
    return end;
}

} // namespace

std::size_t qwzTextPieces::cut(const char* text, std::size_t length, std::size_t wanted)
{
    if (length <= wanted)
        return length;
    // a line end in the second half: a piece of whole lines, not much shorter than wanted
    const std::size_t half = wanted / 2;
    for (std::size_t i = wanted; i > half; --i)
        if (text[i - 1] == '\n')
            return i;
    // one long line: back off over at most one character's continuation bytes
    std::size_t end = wanted;
    for (std::size_t back = 0; end > 0 && back < maxContinuation && continuation(text[end]); ++back)
        --end;
    // no lead byte within reach: stray bytes, each a character of its own
    if (continuation(text[end]))
        end = wanted;
    if (end > 0 && text[end] == '\n' && text[end - 1] == '\r')
        --end;
    return end > 0 ? end : firstCharacter(text, length);
}
