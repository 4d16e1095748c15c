// How the catalog library meets the file system: files are named in UTF-8 and reach the platform as
// UTF-16; the kind probe classifies a path by its status, retrying interrupted queries a bounded number
// of times.
#pragma once

#include <cstdio>
#include <memory>

#include "foundation/utFileHandle.h"
#include "platform/platform.h"

enum nlsFileKind {
    nlsFILE = 0,        // regular file or character device
    nlsNOT_FOUND = 2,   // does not exist
    nlsFAILED = 5,      // any other failure
    nlsOTHER = 6,       // neither file, device nor directory
    nlsDIRECTORY = 7,   // directory
    nlsINTERRUPTED = 8, // still interrupted after 15 nested retries
    nlsNAME_TOO_LONG = 10,
    nlsACCESS_DENIED = 11,
    nlsLINK_ERROR = 12,
};

// The kind of the entry a path names; one trailing "/" or "\" is ignored.
nlsFileKind nlsProbeFile(const char* path);

// Status by UTF-8 name: 0, or the C library's error number.
int nlsStat(const char* path, platform::Status& out);

using nlsFileHandle = utFileHandle;

// Opens a file by UTF-8 name; null on failure.
nlsFileHandle nlsOpenFile(const char* path, const char* mode);
