// Loads arbitrary bytes as a message catalog and looks keys up: whatever the bytes, loading either
// refuses them or yields a database whose lookups stay inside the image and end. Formats go through the
// printf check and are then formatted with the arguments of their English text, as the program does: a
// translation let through with a string for a number, or a %n, faults here.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "foundation/utFormat.h"
#include "nls/nlsDataBase.h"
#include "nls/nlsPrintfFormat.h"

namespace
{

// The English formats of the seed catalogs (tests/unit/data/nls), each with arguments of its own types.
struct FormatKey {
    const char* key;
    utString (*format)(const char* translated);
};

const FormatKey formatKeys[] = {
    {"Line %d of %d", [](const char* f) { return utFormat(f, 3, 7); }},
    {"Opened %s", [](const char* f) { return utFormat(f, "a.txt"); }},
    {"%s copied to %s", [](const char* f) { return utFormat(f, "a.txt", "b.txt"); }},
    {"%s: line %d", [](const char* f) { return utFormat(f, "a.txt", 3); }},
    {"%d files", [](const char* f) { return utFormat(f, 3); }},
    {"%lu bytes", [](const char* f) { return utFormat(f, 3ul); }},
    {"Ratio %f", [](const char* f) { return utFormat(f, 0.5); }},
    {"Saved %s", [](const char* f) { return utFormat(f, "a.txt"); }},
    {"%s and %s", [](const char* f) { return utFormat(f, "a", "b"); }},
    {"%-10s|%lu", [](const char* f) { return utFormat(f, "a", 3ul); }},
    {"%*d items", [](const char* f) { return utFormat(f, 4, 3); }},
    {"You are running the latest version of %s.", [](const char* f) { return utFormat(f, "Quillon"); }},
};

} // namespace

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
    bool first = false;
    const char* answer = db.translateFormat(tail.c_str(), first);
    if (answer != tail.c_str())
        (void)std::strlen(answer);
    for (const FormatKey& k : formatKeys) {
        const char* translated = db.translateFormat(k.key, first);
        std::vector<nlsPrintfFormat::Argument> read;
        if (translated != k.key && !nlsPrintfFormat::arguments(translated, read))
            __builtin_trap(); // a translation that cannot be read was let through
        k.format(translated);
    }
    return 0;
}
