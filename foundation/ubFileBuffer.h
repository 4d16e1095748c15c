// ubFileBuffer: a standard stream buffer over a C library FILE opened by UTF-8 name. The C library
// buffers; this class keeps only a one-character cell for put-back. Invariant: file_ is null or a
// handle this buffer opened and alone closes.
#pragma once

#include <cstdio>
#include <ios>
#include <streambuf>

// Open-mode flags by value; combine with |.
namespace ubMode
{
constexpr unsigned in = 0x01;
constexpr unsigned out = 0x02;
constexpr unsigned atEnd = 0x04;
constexpr unsigned append = 0x08;
constexpr unsigned truncate = 0x10;
constexpr unsigned binary = 0x20;
constexpr unsigned noCreate = 0x40;  // implies in
constexpr unsigned noReplace = 0x80; // with out: fail when the file exists
} // namespace ubMode

// Our flags for the standard ones (in, out, ate, app, trunc, binary).
unsigned ubModeOf(std::ios_base::openmode mode);

class ubFileBuffer : public std::streambuf
{
public:
    ubFileBuffer();
    ~ubFileBuffer() override;
    ubFileBuffer(const ubFileBuffer&) = delete;
    ubFileBuffer& operator=(const ubFileBuffer&) = delete;

    // Opens the UTF-8 `name` with ubMode flags; false when already open, the mode has no C library
    // equivalent, no-replace meets an existing file, or the file cannot be opened or sought to its end.
    bool open(const char* name, unsigned mode);
    bool open(const char* name, std::ios_base::openmode mode)
    {
        return open(name, ubModeOf(mode));
    }
    // True when fclose succeeded; false when nothing was open. Closed afterwards either way.
    bool close();
    bool isOpen() const
    {
        return file_ != nullptr;
    }

protected:
    int_type overflow(int_type ch) override;
    int_type pbackfail(int_type ch) override;
    // Peeks: a character in the get area sign-extended, else a byte read and put back into the cell.
    int_type underflow() override;
    // Takes a character: from the get area sign-extended (0xFF reads as end-of-file), else a byte from
    // the file as 0..255.
    int_type uflow() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode which) override;
    // An absolute seek that, unlike seekoff, leaves the get area alone.
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;
    int sync() override;

private:
    std::FILE* file_;
    char cell_;
};
