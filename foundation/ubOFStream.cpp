// ubOFStream: the standard output stream wired to its member buffer. Invariant: rdbuf() is buffer_.
#include "foundation/ubOFStream.h"

ubOFStream::ubOFStream() : std::ostream(nullptr)
{
    std::ostream::rdbuf(&buffer_);
}

ubOFStream::ubOFStream(const char* name, unsigned mode) : ubOFStream()
{
    open(name, mode);
}

void ubOFStream::open(const char* name, unsigned mode)
{
    if (!buffer_.open(name, mode | ubMode::out))
        setstate(std::ios_base::failbit);
    else
        clear();
}

void ubOFStream::close()
{
    if (!buffer_.close())
        setstate(std::ios_base::failbit);
}
