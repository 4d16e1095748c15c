// Installation tree. The root is two directories above the one that holds the executable.
#include "app/qwzInstallDir.h"

#include "foundation/utPath.h"
#include "platform/platform.h"

namespace
{

const char separators[] = "/\\";

int lastSeparator(const utString& path)
{
    for (int i = path.length() - 1; i >= 0; --i)
        if (path.text()[i] == '/' || path.text()[i] == '\\')
            return i;
    return -1;
}

// Drops trailing separators, then everything from the last separator on; null when none is left.
utString parentOf(const utString& path)
{
    utString trimmed = path.stripTrailing(separators);
    int cut = lastSeparator(trimmed);
    return cut <= 0 ? utString() : trimmed.substring(0, cut);
}

} // namespace

utString qwzInstallRootOf(const utString& executablePath)
{
    utString dir = parentOf(executablePath); // the folder holding the executable: sys\exec
    for (int level = 0; level < 2 && !dir.isNull(); ++level)
        dir = parentOf(dir);
    if (dir.isNull())
        return dir;
    utString root = dir.stripTrailing(separators);
    return root.isEmpty() ? utString() : root;
}

const utString& qwzInstallRoot()
{
    static const utString root = [] {
        utString found = qwzInstallRootOf(utString::copyOf(platform::executablePath(256)));
        return !found.isNull() && utIsDirectory(found) ? found : utString();
    }();
    return root;
}

utString installDir(int kind, const utString& root)
{
    static const char* const suffixes[] = {"\\lib\\locale", "\\file\\help", "\\sys\\exec", "\\sys\\install"};
    if (kind < Locale || kind > Install)
        return utString::copyOf("");
    return root + utString(suffixes[kind]);
}
