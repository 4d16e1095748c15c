// A file's bytes on their way to the view: percent rendering in place, then the fused line-end and
// UTF-16 conversion, checked against the two steps done one
// after the other and against the foundation's conversion.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "document/qwzEditText.h"
#include "document/qwzPercentRender.h"
#include "foundation/utTextConversion.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string bytes(reinterpret_cast<const char*>(data), size);
    std::size_t rendered = qwzPercentRender::renderInPlace(bytes.data(), bytes.size());
    if (rendered > size)
        std::abort();
    bytes.resize(rendered);

    qwzEditText fused;
    if (!fused.assign(bytes.data(), bytes.size()))
        std::abort();
    std::string withCr(bytes.size() + qwzEditText::crCount(bytes.data(), bytes.size()), '\0');
    if (qwzEditText::crlfCopy(bytes.data(), bytes.size(), withCr.data()) != withCr.size())
        std::abort();
    qwzEditText separate;
    if (!separate.assign(withCr.data(), withCr.size()) || separate.size() != fused.size() ||
        std::memcmp(separate.text(), fused.text(), fused.size() * sizeof(char16_t)) != 0)
        std::abort();
    utUtf8ToUtf16 reference(withCr.data(), static_cast<int>(withCr.size()));
    if (reference.str() != std::u16string(fused.text(), fused.size()))
        std::abort();
    return 0;
}
