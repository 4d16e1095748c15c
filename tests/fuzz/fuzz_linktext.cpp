// The link control's parser: any text, and the ranges it reports stay inside the plain text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "app/qwzLinkText.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    qwzLinkText parsed(std::string_view(reinterpret_cast<const char*>(data), size));
    const std::size_t length = parsed.plainText().size();
    if (length > size || parsed.url().size() > size)
        std::abort();
    if (parsed.linkStart() > parsed.linkEnd() || parsed.linkEnd() > length)
        std::abort();
    std::size_t previous = 0;
    for (const auto& r : parsed.linkRanges()) {
        if (r.start < previous || r.start > r.end || r.end > length)
            std::abort();
        previous = r.end;
    }
    return 0;
}
