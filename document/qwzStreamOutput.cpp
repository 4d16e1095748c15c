// Stream channel: write failures stay in the stream's state; nothing is flushed here.
#include "document/qwzStreamOutput.h"

qwzStreamOutput::qwzStreamOutput(std::ostream* stream) : stream(stream) {}

void qwzStreamOutput::write(const utString& text)
{
    if (stream)
        *stream << text.c_str();
}
