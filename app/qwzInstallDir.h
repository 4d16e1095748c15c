// The layout of the installation tree: a directory of a kind is the installation directory followed by a
// fixed suffix.
#pragma once

#include "foundation/utString.h"

enum qwzInstallDir { Locale = 0, Help = 1, Exec = 2, Install = 3 };

// The installation directory of an executable file in <root>\sys\exec: <root>. Both separators count
// everywhere. The null string when the path has too few components.
utString qwzInstallRootOf(const utString& executablePath);

// The process's installation directory, found once from the running executable; null when not found.
const utString& qwzInstallRoot();

// The directory of a kind below `root`; the empty text for an unknown kind.
utString installDir(int kind, const utString& root = qwzInstallRoot());
