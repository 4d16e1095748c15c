// Fuzzes the recovery-file parser: whatever the bytes, it stays inside them, and a record it takes comes
// back unchanged when it is written out again (from its text as UTF-16, the way the editor holds it) and
// parsed once more.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "document/qwzRecoveryFile.h"
#include "foundation/utTextConversion.h"

namespace
{
void check(bool ok)
{
    if (!ok)
        std::abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    qwzRecoveryRecord record;
    if (qwzRecoveryFile::parse(reinterpret_cast<const char*>(data), size, record) != qwzRecoveryFile::ParseResult::Ok)
        return 0;
    check(record.caret <= record.text.size());
    utUtf8ToUtf16 wide(record.text.data(), static_cast<int>(record.text.size()));
    std::string again;
    check(qwzRecoveryFile::format(record.path, record.encoding, record.caret, wide.c_str(),
                                  static_cast<size_t>(wide.length()), again));
    qwzRecoveryRecord second;
    check(qwzRecoveryFile::parse(again.data(), again.size(), second) == qwzRecoveryFile::ParseResult::Ok);
    check(second.path == record.path && second.encoding == record.encoding);
    check(second.caret <= static_cast<size_t>(wide.length()));
    // text that is already well-formed UTF-8 comes back byte for byte
    utUtf16ToUtf8 narrow(wide.str());
    check(second.text == narrow.str());
    return 0;
}
