// Loads arbitrary bytes as a message catalog and looks keys up: whatever the bytes, loading either
// refuses them or yields a database whose lookups stay inside the image and end.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "nls/nlsDataBase.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    nlsDataBase db(data, size);
    if (db.failed())
        return 0;
    static const char* const keys[] = {"", "Open", "Usage:\n\n", "Line %d of %d", "zz last entry", "\xff\x80"};
    for (const char* key : keys) {
        const char* answer = db.translate(key);
        if (answer != key)
            (void)std::strlen(answer); // a found translation must be a NUL-terminated text inside the image
    }
    // a key made of the input's last bytes, so that the fuzzer can steer hash values
    std::string tail(reinterpret_cast<const char*>(data) + (size > 16 ? size - 16 : 0), size > 16 ? 16 : size);
    const char* answer = db.translate(tail.c_str());
    if (answer != tail.c_str())
        (void)std::strlen(answer);
    return 0;
}
