// Piece boundaries. A cut never falls before a continuation byte (10xxxxxx), valid or not: the converter
// shows a run of bytes that are not UTF-8 as one character, so a run split in two would show as two.
#include "document/qwzTextPieces.h"

namespace
{

bool continuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
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
    // one long line: the last boundary before a byte that starts a character
    std::size_t end = wanted;
    while (end > 0 && continuation(text[end]))
        --end;
    if (end > 0 && text[end] == '\n' && text[end - 1] == '\r')
        --end;
    if (end > 0)
        return end;
    // nothing fits: the first character (or CR-LF pair) with any bytes that hang on it
    if (length >= 2 && text[0] == '\r' && text[1] == '\n')
        return 2;
    end = 1;
    while (end < length && continuation(text[end]))
        ++end;
    return end;
}
