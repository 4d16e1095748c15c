// The process-wide version record: what the title bar, the About box and the version check show.
#pragma once

#include "foundation/utString.h"

struct qwzVersionInfo {
    utString version;
    int versionDigits;
    utString buildDate;
    utString buildNumber;
    utString fullName;    // "Quillon 4.3.4002": the frame's title and the name the version check reports
    utString displayName; // the first line of the copyright text
    utString productName;

    // The record as built when the process starts, before the product file is read.
    qwzVersionInfo();

    static qwzVersionInfo& instance();

    // displayName, the copyright notice up to this year's local clock, and "All rights reserved", the last
    // two translated.
    utString copyrightText() const;

    // Reads <productDir>\product into the names; a missing or unreadable file marks displayName.
    void readProductFile(const utString& productDir);
};
