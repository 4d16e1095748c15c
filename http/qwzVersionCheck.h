// The version check's verdict, apart from the requests that feed it: the server's comparison key against
// the program's own, and the message the user is shown. Invariant: only links that the program writes
// are live in the message; angle brackets from the server are neutralised before formatting.
#pragma once

#include <cstdint>
#include <string>

#include "foundation/utString.h"

struct VersionCheckResult {
    int32_t upToDate = 0; // 1 only when the installed version is the latest one
    utString message;     // the text to show, with at most the program's own link
};

// The two answers of the product-attribute server: status and value of the attributes "version" (the
// latest version's comparison key, digits only: 434003) and "version_string" (its display text).
struct qwzVersionAnswers {
    int keyStatus = 0;
    const char* key = nullptr;
    int displayStatus = 0;
    const char* display = nullptr;
};

// The running program's comparison key: its version and build number with every "." removed (434002).
std::string qwzOwnVersionKey();

// Compares the server's key with the program's as text, byte by byte as unsigned characters: 4340 sorts
// before 434002 and "4.3.4003" before both. Below, equal to or above 0 as strcmp.
int qwzCompareVersionKeys(const char* serverKey, const char* ownKey);

// The server's text with "<" and ">" replaced by the look-alike quotation marks U+2039 and U+203A, so that
// it shows as written but can open no tag.
std::string qwzNeutraliseMarkup(const char* text);

// The verdict on two answers: "Unable to contact <host>" when either request failed, otherwise the
// NEWER, latest or OLDER message (upToDate set only for the latest), translated and formatted.
VersionCheckResult qwzVersionVerdict(const qwzVersionAnswers& answers, const char* host);
