// Paths on utString: expansion of one environment reference and the file-kind probes.
// Invariant: a path goes through expansion, then our own UTF-8 -> UTF-16 conversion, before it
// reaches the system, so every probe sees the name exactly as the file streams open it.
#pragma once

#include "foundation/utString.h"

// Resolves one environment reference by the first character: "~" -> HOME then the rest; "$NAME/rest"
// -> NAME's value then "/rest"; otherwise a whole-input variable name is followed through its values
// (at most 64 look-ups, stopping at a one-character value that is no name). Unset variables give "".
// Any input length is safe. A null text gives the null string.
utString utExpandReferences(const char* text, int length);
utString utExpandReferences(const utString& path);

enum utProbeResult {
    utProbeOtherKind = 0, // a directory or any other kind of entry
    utProbeRegular = 3,   // a regular file, or an entry without type bits
    utProbeFailed = 8,    // the status call failed (missing path, bad name)
};

// Status of the expanded path: one of utProbeResult.
int utProbe(const utString& path);
// True when the path names a regular file; false for a null or empty path.
bool utIsRegularFile(const utString& path);
// True when the path, less trailing '/' and '\\', probes as utProbeOtherKind; false for null or empty.
bool utIsDirectory(const utString& path);

enum utRemoveResult {
    utRemoveNotRegular = 4,  // nothing removed: not a regular file (missing, say)
    utRemoveIsDirectory = 5, // nothing removed: a directory and no directory was asked for
    utRemoved = 6,
    utRemoveFailed = 7,
};

// Removes a regular file, or with `directory` an empty directory; one of utRemoveResult.
int utRemoveFile(const utString& path, bool directory = false);
