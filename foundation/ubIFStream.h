// ubIFStream: a standard input stream over its own ubFileBuffer, opened by UTF-8 name.
// Invariant: the stream's buffer is always the member buffer; a failed open sets the fail bit.
#pragma once

#include <istream>

#include "foundation/ubFileBuffer.h"

class ubIFStream : public std::istream
{
public:
    ubIFStream();
    // Opens `name` with mode | in; sets the fail bit on failure.
    explicit ubIFStream(const char* name, unsigned mode = ubMode::in);
    ubIFStream(const char* name, std::ios_base::openmode mode) : ubIFStream(name, ubModeOf(mode)) {}
    // Opens (mode | in) on a closed stream; sets the fail bit on failure.
    void open(const char* name, unsigned mode = ubMode::in);
    void open(const char* name, std::ios_base::openmode mode)
    {
        open(name, ubModeOf(mode));
    }
    // Closes; sets the fail bit when nothing was open or fclose failed.
    void close();
    bool isOpen() const
    {
        return buffer_.isOpen();
    }
    ubFileBuffer* rdbuf()
    {
        return &buffer_;
    }

private:
    ubFileBuffer buffer_;
};
