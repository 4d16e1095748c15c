// ubOFStream: a standard output stream over its own ubFileBuffer, opened by UTF-8 name.
// Invariant: the stream's buffer is always the member buffer; a failed open sets the fail bit.
#pragma once

#include <ostream>

#include "foundation/ubFileBuffer.h"

class ubOFStream : public std::ostream
{
public:
    ubOFStream();
    // Opens `name` with mode | out; sets the fail bit on failure.
    explicit ubOFStream(const char* name, unsigned mode = ubMode::out);
    ubOFStream(const char* name, std::ios_base::openmode mode) : ubOFStream(name, ubModeOf(mode)) {}
    // Opens (mode | out) on a closed stream; sets the fail bit on failure.
    void open(const char* name, unsigned mode = ubMode::out);
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
