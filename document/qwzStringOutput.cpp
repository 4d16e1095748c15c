// String channel: the accumulator starts as an owned empty text, so the first write appends.
#include "document/qwzStringOutput.h"

qwzStringOutput::qwzStringOutput() : accumulated(utString::copyOf("")) {}

void qwzStringOutput::write(const utString& text)
{
    accumulated.append(text);
}
