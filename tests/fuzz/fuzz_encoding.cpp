// Fuzzes the probe, the decoder and the encoder: UTF-16 decodes to valid UTF-8, UTF-8 passes unchanged,
// any split of the input gives the output of one call, and a text decoded exactly saves as the same bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "foundation/utTextConversion.h"
#include "foundation/utTextEncoding.h"
#include "tests/fuzz/fuzzUtf8.h"

namespace
{
void check(bool ok)
{
    if (!ok)
        std::abort();
}

bool isUtf16(utEncoding e)
{
    return e == utEncoding::Utf16LE || e == utEncoding::Utf16BE;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const char* bytes = reinterpret_cast<const char*>(data);

    utTextProbe probe = utProbeText(bytes, size);
    check(probe.markLength <= size);
    if (probe.markLength == 0 && isUtf16(probe.encoding))
        check(probe.isText && size % 2 == 0);

    // the probe's reading and, from the first byte, each of the others
    static const utEncoding all[] = {utEncoding::Utf8, utEncoding::Utf8Bom, utEncoding::Utf16LE, utEncoding::Utf16BE};
    utEncoding chosen = size ? all[data[0] % 4] : utEncoding::Utf8;
    for (utEncoding e : {probe.encoding, chosen}) {
        size_t mark = e == probe.encoding ? probe.markLength : 0;
        const char* text = bytes + mark;
        size_t length = size - mark;

        utTextDecoder whole(e);
        std::string out;
        whole.decode(text, length, out);
        whole.finish(out);
        if (isUtf16(e))
            check(validUtf8(out));
        else
            check(out == std::string(text, length) && whole.exact());

        // pieces whose sizes come from the bytes themselves
        utTextDecoder pieces(e);
        std::string got;
        uint32_t state = static_cast<uint32_t>(size) * 2654435761u;
        for (size_t at = 0; at < length;) {
            state = state * 1103515245u + 12345u + (at < size ? data[at] : 0);
            size_t n = (state >> 16) % 7;
            if (n > length - at)
                n = length - at;
            pieces.decode(text + at, n, got);
            at += n;
        }
        pieces.finish(got);
        check(got == out && pieces.exact() == whole.exact());

        // exactly decoded UTF-16 and valid UTF-8 come back byte for byte
        bool exact = isUtf16(e) ? whole.exact() : validUtf8(out);
        if (exact) {
            utUtf8ToUtf16 units(out.data(), static_cast<int>(out.size()));
            std::string saved = utEncodeText(units.str(), e);
            std::string expected = utEncodeText(u"", e) + std::string(text, length);
            check(saved == expected);
        }
    }
    return 0;
}
