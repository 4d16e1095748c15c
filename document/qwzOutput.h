// Output channels: small sinks of UTF-8 text. Code that produces text for the user in bulk never knows
// whether it ends in the view, on standard output, in a log file, in memory or nowhere.
#pragma once

#include "foundation/utString.h"

class qwzOutput
{
public:
    virtual ~qwzOutput();

    // Delivers one piece of UTF-8 text to the sink; line ends are single LFs.
    virtual void write(const utString& text) = 0;

    // Formats with the vsnprintf rules and writes the result. The leading integer is read by nobody.
    void printf(int, const char* format, ...)
#ifdef __GNUC__
        __attribute__((format(printf, 3, 4)))
#endif
        ;

    // Writes string-table entry `id`, translated, then formatted with the remaining arguments.
    // An unknown id writes the empty text.
    void printMessage(int, unsigned int id, ...);
};
