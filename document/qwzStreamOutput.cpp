// Stream channel: write failures stay in the stream's state; nothing is flushed here.
#include "document/qwzStreamOutput.h"

#include <iostream>

qwzStreamOutput::qwzStreamOutput(std::ostream* stream) : stream(stream) {}

qwzOutput& qwzStreamOutput::standardOutput()
{
    // built on first use, so that it exists for every caller during static initialisation
    static qwzStreamOutput channel(&std::cout);
    return channel;
}

void qwzStreamOutput::write(const utString& text)
{
    if (stream)
        *stream << text.c_str();
}
