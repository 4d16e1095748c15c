// Fuzzes the product description reader over arbitrary file bytes written to a private temp file.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

#include "foundation/utProductDescription.h"

namespace
{
// The run's own input file, in TMPDIR (the fuzz build's folder when make runs it), removed when the
// fuzzer exits.
struct TempFile {
    std::string path;
    TempFile()
    {
        const char* tmp = std::getenv("TMPDIR");
        path = std::string(tmp && *tmp ? tmp : "/tmp") + "/fuzz_product.XXXXXX";
        int fd = mkstemp(path.data());
        if (fd < 0)
            std::abort();
        close(fd);
    }
    ~TempFile()
    {
        std::remove(path.c_str());
    }
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const TempFile temp;
    const std::string& path = temp.path;
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f)
        return 0;
    std::fwrite(data, 1, size, f);
    std::fclose(f);

    utProductDescription product;
    int code = product.load(path.c_str(), utString("R1"));
    if (code < utProductLoaded || code > utProductBadFormat)
        std::abort();
    if (code == utProductLoaded) {
        utString name = product.value(utProductDescription::nameKey);
        if (name.isNull() || product.shortText().isNull() || product.longText().isNull())
            std::abort();
        if (product.shortText().find(name) != 0 || product.longText().find(utString("R1")) < 0)
            std::abort();
    } else if (!product.shortText().isNull() || !product.longText().isNull()) {
        std::abort();
    }
    return 0;
}
