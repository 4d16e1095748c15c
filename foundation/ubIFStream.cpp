// ubIFStream: the standard input stream wired to its member buffer. Invariant: rdbuf() is buffer_.
#include "foundation/ubIFStream.h"

ubIFStream::ubIFStream() : std::istream(nullptr)
{
    std::istream::rdbuf(&buffer_);
}

ubIFStream::ubIFStream(const char* name, unsigned mode) : ubIFStream()
{
    open(name, mode);
}

void ubIFStream::open(const char* name, unsigned mode)
{
    if (!buffer_.open(name, mode | ubMode::in))
        setstate(std::ios_base::failbit);
    else
        clear();
}

void ubIFStream::close()
{
    if (!buffer_.close())
        setstate(std::ios_base::failbit);
}
