// Fuzzes the expansion of environment references with arbitrary (also very long) inputs and
// variable values. The input is split at NUL bytes: the text to expand, HOME's value, FZV's value.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "foundation/utPath.h"

namespace
{
// The environment points at these buffers (putenv), so a run rewrites values without the C
// library keeping a copy of each one.
constexpr size_t maxValue = 1 << 17;
char homeEntry[maxValue + 8] = "HOME=";
char varEntry[maxValue + 8] = "FZV=";
char chainEntry[] = "FZA=FZV";

void setValue(char* entry, size_t prefix, const char* value, size_t length)
{
    if (length > maxValue)
        length = maxValue;
    std::memcpy(entry + prefix, value, length);
    entry[prefix + length] = '\0';
}

void check(bool ok)
{
    if (!ok)
        std::abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static bool installed = (putenv(homeEntry), putenv(varEntry), putenv(chainEntry), true);
    (void)installed;
    const char* p = reinterpret_cast<const char*>(data);
    const char* end = p + size;
    const char* cut1 = static_cast<const char*>(std::memchr(p, 0, size));
    const char* homeStart = cut1 ? cut1 + 1 : end;
    const char* cut2 = static_cast<const char*>(std::memchr(homeStart, 0, static_cast<size_t>(end - homeStart)));
    const char* varStart = cut2 ? cut2 + 1 : end;
    std::string text(p, cut1 ? cut1 : end);
    std::string home(homeStart, cut2 ? cut2 : end);
    std::string var(varStart, end);
    setValue(homeEntry, 5, home.data(), home.size());
    setValue(varEntry, 4, var.data(), var.size());

    utString out = utExpandReferences(text.data(), static_cast<int>(text.size()));
    check(!out.isNull());
    if (!text.empty() && text[0] == '~') {
        check(out.str() == std::string(homeEntry + 5) + text.substr(1));
    } else if (text.rfind("$FZV", 0) == 0 && (text.size() == 4 || text[4] == '/')) {
        check(out.str() == std::string(varEntry + 4) + text.substr(4));
    } else if (text.empty()) {
        check(out.length() == 0);
    }
    // the length bounds the input even when the text goes on
    utString cut = utExpandReferences(text.data(), static_cast<int>(text.size() / 2));
    check(!cut.isNull());
    return 0;
}
