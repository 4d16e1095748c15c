// A file's text cut into the view's pieces: the first byte chooses the wanted size, the rest is the text.
// Every piece is non-empty and within bounds, and the pieces converted one by one give the whole text's
// conversion (no cut inside a character or between a CR and its LF).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "document/qwzEditText.h"
#include "document/qwzTextPieces.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const std::size_t wanted = 1 + data[0] % 64;
    const char* text = reinterpret_cast<const char*>(data + 1);
    const std::size_t length = size - 1;
    std::u16string joined;
    for (std::size_t at = 0; at < length;) {
        const std::size_t n = qwzTextPieces::cut(text + at, length - at, wanted);
        if (n == 0 || n > length - at)
            std::abort();
        // longer than wanted only for one character and the bytes that are not UTF-8 after it
        for (std::size_t i = 1; n > wanted && i < n; ++i)
            if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80 && !(n == 2 && text[at] == '\r'))
                std::abort();
        qwzEditText piece;
        if (!piece.assign(text + at, n))
            std::abort();
        joined.append(piece.text(), piece.size());
        at += n;
    }
    qwzEditText whole;
    if (!whole.assign(text, length) || joined != std::u16string(whole.text(), whole.size()))
        std::abort();
    return 0;
}
