// Word boundaries: only spaces and tabs separate words, so that a wrapped log line breaks where a reader
// expects it and a line without any breaks where it no longer fits (the control does that itself).
#include "document/qwzWordBreak.h"

namespace
{

bool blank(char16_t c)
{
    return c == u' ' || c == u'\t';
}

} // namespace

int qwzWordBreak::find(const char16_t* text, int index, int count, int action)
{
    if (text == nullptr || count <= 0 || index < 0)
        return 0;
    if (index > count)
        index = count;
    int at = index;
    switch (action) {
    case Left:
        if (at > 0)
            --at;
        while (at > 0 && blank(text[at]))
            --at;
        while (at > 0 && !blank(text[at - 1]))
            --at;
        return at;
    case Right:
        while (at < count && !blank(text[at]))
            ++at;
        while (at < count && blank(text[at]))
            ++at;
        return at;
    case IsDelimiter:
        return at < count && blank(text[at]) ? 1 : 0;
    default:
        return 0;
    }
}
