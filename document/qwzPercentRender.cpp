// Percent rendering of document text: pairs are taken from the left, so "%%%" shows as "%%".
#include "document/qwzPercentRender.h"

#include <cstring>

std::size_t qwzPercentRender::renderInPlace(char* text, std::size_t length)
{
    if (text == nullptr)
        return 0;
    // Nothing moves before the first "%%", so a text without one is only scanned.
    char* const end = text + length;
    char* read = text;
    char* write = nullptr;
    while (read < end) {
        char* percent = static_cast<char*>(std::memchr(read, '%', static_cast<std::size_t>(end - read)));
        char* stop = percent ? percent : end;
        if (write != nullptr && write != read)
            std::memmove(write, read, static_cast<std::size_t>(stop - read));
        if (write != nullptr)
            write += stop - read;
        if (percent == nullptr)
            break;
        if (write == nullptr)
            write = percent;
        *write++ = '%';
        // a doubled sign collapses; a single one stays
        read = (end - percent > 1 && percent[1] == '%') ? percent + 2 : percent + 1;
    }
    return write == nullptr ? length : static_cast<std::size_t>(write - text);
}

std::string qwzPercentRender::render(std::string_view text)
{
    std::string out(text);
    out.resize(renderInPlace(out.data(), out.size()));
    return out;
}
