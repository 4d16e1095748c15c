// utProductDescription: the installed product's "product" file read into a string table, and the two
// display texts composed from it. Invariant: a failed load leaves both texts as they were.
#pragma once

#include "foundation/utString.h"
#include "foundation/utStringutStringcoTablePcoSet.h"

enum utProductLoadResult {
    utProductLoaded = 0,    // both texts composed
    utProductNoFile = 1,    // the file could not be opened
    utProductMalformed = 2, // no format number, a bad record, a repeated key or a missing required key
    utProductBadFormat = 3, // the format number is not 1
    utProductNullArgument = 4,
};

class utProductDescription
{
public:
    // The field keys; "name", "release" and "type" are required.
    static const utString nameKey;
    static const utString releaseKey;
    static const utString servicePackKey;
    static const utString typeKey;

    utProductDescription();

    // Reads the UTF-8-named file: the format number 1, then one |key|value| record per line (any
    // delimiter, any line length). Fields read before a failure stay; a key read by an earlier load
    // counts as repeated. Returns a utProductLoadResult.
    int load(const char* fileName, const utString& extraText);
    // "name release" with "(service pack 64-bit)" as they apply; null before a successful load.
    utString shortText() const
    {
        return shortText_;
    }
    // "name release (service pack type extra 64-bit)", the type left out when it is exactly "CR".
    utString longText() const
    {
        return longText_;
    }
    // The field's value, or the null string when absent.
    utString value(const utString& key) const
    {
        return fields_.findValue(key);
    }

private:
    bool readRecords(class ubIFStream& in);
    bool compose(const utString& extraText);

    utString shortText_;
    utString longText_;
    utStringutStringcoTablePcoSet fields_;
};
