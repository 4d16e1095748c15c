// Fuzzes the UTF-8 <-> UTF-16 holders: whatever the input, the outputs are well-formed, a second
// round trip changes nothing, and copy out stays inside its buffer.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "foundation/utTextConversion.h"
#include "tests/fuzz/fuzzUtf8.h"

namespace
{
void check(bool ok)
{
    if (!ok)
        std::abort();
}

// Strict UTF-16: every surrogate in a proper pair.
bool validUtf16(const std::u16string& s)
{
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] >= 0xD800 && s[i] <= 0xDBFF) {
            if (i + 1 >= s.size() || s[i + 1] < 0xDC00 || s[i + 1] > 0xDFFF)
                return false;
            ++i;
        } else if (s[i] >= 0xDC00 && s[i] <= 0xDFFF) {
            return false;
        }
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const char* bytes = reinterpret_cast<const char*>(data);
    int n = static_cast<int>(size);

    utUtf8ToUtf16 wide(bytes, n);
    check(validUtf16(wide.str()));
    utUtf16ToUtf8 narrow(wide.str());
    check(validUtf8(narrow.str()));
    utUtf8ToUtf16 again(narrow.str().data(), narrow.length());
    check(again.str() == wide.str());

    // the same bytes taken as UTF-16 units
    std::u16string units(size / 2, u'\0');
    for (size_t i = 0; i + 1 < size; i += 2)
        units[i / 2] = static_cast<char16_t>(data[i] | (data[i + 1] << 8));
    utUtf16ToUtf8 fromUnits(units);
    check(validUtf8(fromUnits.str()));
    utUtf8ToUtf16 back(fromUnits.str().data(), fromUnits.length());
    check(validUtf16(back.str()));
    if (validUtf16(units))
        check(back.str() == units);

    // copy out into a buffer cut to a size taken from the input
    int room = size ? data[0] % 64 : 0;
    std::vector<char> out(static_cast<size_t>(room) + 1, '#');
    int written = narrow.copyOut(out.data(), room);
    check(written >= 0 && written <= room && out[static_cast<size_t>(room)] == '#');
    return 0;
}
