// The channel base: formatting with a buffer that doubles until the text fits, and the message path
// string table -> catalog -> format.
#include "document/qwzOutput.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <new>

#include "app/qwzAppCatalog.h"
#include "document/qwzStreamOutput.h"
#include "platform/platform.h"

qwzOutput::~qwzOutput() = default;

utString qwzFormat(const char* format, va_list args)
{
    size_t size = 4192;
    for (;;) {
        char* buffer = static_cast<char*>(std::malloc(size));
        if (!buffer)
            throw std::bad_alloc();
        va_list copy;
        va_copy(copy, args);
        int n = std::vsnprintf(buffer, size, format, copy);
        va_end(copy);
        // some runtimes report a short buffer with -1, others with the needed length
        if (n >= 0 && size_t(n) < size) {
            utString text(buffer, n);
            std::free(buffer);
            return text;
        }
        std::free(buffer);
        size *= 2;
    }
}

void qwzOutput::printf(int, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    utString text = qwzFormat(format, args);
    va_end(args);
    write(text);
}

void qwzOutput::printMessage(int, unsigned int id, ...)
{
    std::string english = platform::loadString(id);
    utString message = translate(english.c_str());
    va_list args;
    va_start(args, id);
    utString text = qwzFormat(message.c_str(), args);
    va_end(args);
    write(text);
}

qwzOutput& qwzOutput::standardOutput()
{
    // built on first use, so that it exists for every caller during static initialisation
    static qwzStreamOutput channel(&std::cout);
    return channel;
}
