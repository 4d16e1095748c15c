// The channel base: formatting with a buffer that doubles until the text fits, and the message path
// string table -> catalog -> format.
#include "document/qwzOutput.h"

#include <cstdarg>
#include <iostream>

#include "app/qwzAppCatalog.h"
#include "document/qwzStreamOutput.h"
#include "foundation/utFormat.h"
#include "platform/platform.h"

qwzOutput::~qwzOutput() = default;

void qwzOutput::printf(int, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    utString text = utFormatV(format, args);
    va_end(args);
    write(text);
}

void qwzOutput::printMessage(int, unsigned int id, ...)
{
    std::string english = platform::loadString(id);
    utString message = translatedFormat(english.c_str());
    va_list args;
    va_start(args, id);
    utString text = utFormatV(message.c_str(), args);
    va_end(args);
    write(text);
}

qwzOutput& qwzOutput::standardOutput()
{
    // built on first use, so that it exists for every caller during static initialisation
    static qwzStreamOutput channel(&std::cout);
    return channel;
}
