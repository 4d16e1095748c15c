// A document's text through the page layout: the first bytes choose the frame, the rest is UTF-16 text
// measured by a measure that the input also steers (zero, huge and negative advances included). Every
// run must lie inside the text, in order, on a row of its page, and the pages must hold every line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "foundation/utPageLayout.h"

namespace
{

class FuzzMeasure : public utTextMeasure
{
public:
    int advance(const char16_t* c, std::size_t units) override
    {
        switch (*c % 7) {
        case 0:
            return 0;
        case 1:
            return -5;
        case 2:
            return 0x7FFFFFFF;
        default:
            return int(*c % 23 + units);
        }
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3)
        return 0;
    int width = data[0] * 4 - 8;
    int linesPerPage = data[1] % 9 - 1;
    int tabColumns = data[2] % 10 - 1;
    std::vector<char16_t> text((size - 3) / 2);
    if (!text.empty())
        std::memcpy(text.data(), data + 3, text.size() * 2);
    FuzzMeasure measure;
    utPageLayout layout(text.data(), text.size(), measure, width, linesPerPage, tabColumns);
    std::size_t pages = layout.paginate();
    if (pages == 0 || pages != layout.pageCount() || pages > text.size() + 1)
        std::abort();
    std::size_t lastEnd = 0;
    for (std::size_t p = 0; p < pages; ++p) {
        for (const utPageLayout::Run& run : layout.pageRuns(p)) {
            if (run.start >= run.end || run.end > text.size() || run.start < lastEnd || run.x < 0 ||
                run.row >= std::size_t(linesPerPage < 1 ? 1 : linesPerPage))
                std::abort();
            lastEnd = run.end;
        }
    }
    if (!layout.pageRuns(pages).empty())
        std::abort();
    return 0;
}
