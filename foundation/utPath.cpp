// Environment references in paths and the file-kind probes. Invariant: the expansion works on copies
// sized from its input and the variables' values, so no input length can overrun it.
#include "foundation/utPath.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <string>

#include "foundation/utTextConversion.h"
#include "platform/platform.h"

namespace
{
// The working copy keeps the classic minimum size and grows with the input.
constexpr size_t minimumWorkingSize = 1026;
constexpr int maximumFurtherLookups = 63;

std::string valueOf(const std::string& name)
{
    const char* v = name.empty() ? nullptr : std::getenv(name.c_str());
    return v ? std::string(v) : std::string();
}

// A one-character value ends a chain of names: "1" or "/" is a setting, not another variable's name.
// A single letter or underscore still names one (P=Q, Q=R resolves P to R).
bool endsChain(const char* value)
{
    if (std::strlen(value) != 1)
        return false;
    unsigned char c = static_cast<unsigned char>(value[0]);
    return !(std::isalpha(c) || c == '_');
}

std::string followNames(const std::string& input)
{
    std::string current = input;
    for (int lookups = 0; lookups <= maximumFurtherLookups; ++lookups) {
        const char* v = current.empty() ? nullptr : std::getenv(current.c_str());
        if (!v || endsChain(v) || lookups == maximumFurtherLookups)
            break;
        current = v;
    }
    return current;
}
} // namespace

utString utExpandReferences(const char* text, int length)
{
    if (!text)
        return utString();
    size_t n = 0;
    while (length >= 0 && n < static_cast<size_t>(length) && text[n])
        ++n;
    std::string work;
    work.reserve(n + 1 > minimumWorkingSize ? n + 1 : minimumWorkingSize);
    work.assign(text, n);

    std::string out;
    if (!work.empty() && work[0] == '~') {
        out = valueOf("HOME") + work.substr(1);
    } else if (!work.empty() && work[0] == '$') {
        size_t slash = work.find('/', 1);
        std::string name = work.substr(1, slash == std::string::npos ? std::string::npos : slash - 1);
        out = valueOf(name) + (slash == std::string::npos ? std::string() : work.substr(slash));
    } else {
        out = followNames(work);
    }
    return utString::copyOf(out);
}

utString utExpandReferences(const utString& path)
{
    return utExpandReferences(path.text(), path.length());
}

int utProbe(const utString& path)
{
    utString expanded = utExpandReferences(path);
    utUtf8ToUtf16 name(expanded);
    platform::Status status;
    if (platform::stat(name.c_str(), status) != 0)
        return utProbeFailed;
    if (status.kind == platform::EntryKind::Regular || status.kind == platform::EntryKind::Untyped)
        return utProbeRegular;
    return utProbeOtherKind;
}

bool utIsRegularFile(const utString& path)
{
    return !path.isEmpty() && utProbe(path) == utProbeRegular;
}

bool utIsDirectory(const utString& path)
{
    if (path.isEmpty())
        return false;
    utString stripped = path.stripTrailing("/\\");
    return utProbe(stripped.isEmpty() ? path : stripped) == utProbeOtherKind;
}

int utRemoveFile(const utString& path, bool directory)
{
    if (utIsDirectory(path)) {
        if (!directory)
            return utRemoveIsDirectory;
        utUtf8ToUtf16 name(utExpandReferences(path.stripTrailing("/\\")));
        return platform::rmdir(name.c_str()) == 0 ? utRemoved : utRemoveFailed;
    }
    if (!utIsRegularFile(path))
        return utRemoveNotRegular;
    utUtf8ToUtf16 name(utExpandReferences(path));
    return platform::unlink(name.c_str()) == 0 ? utRemoved : utRemoveFailed;
}
