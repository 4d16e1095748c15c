// ubFileBuffer: opening by the mode table, and the character-level virtuals over fread/fwrite.
// Invariant: the get area is empty, a stretch the base class set, or exactly the cell.
#include "foundation/ubFileBuffer.h"

#include "foundation/utTextConversion.h"

namespace
{
struct ModeString {
    unsigned key;
    const char* mode;
};

using namespace ubMode;
const ModeString modeTable[] = {
    {in, "r"},
    {out, "w"},
    {out | truncate, "w"},
    {out | append, "a"},
    {in | binary, "rb"},
    {out | binary, "wb"},
    {out | truncate | binary, "wb"},
    {out | append | binary, "ab"},
    {in | out, "r+"},
    {in | out | truncate, "w+"},
    {in | out | append, "a+"},
    {in | out | binary, "r+b"},
    {in | out | truncate | binary, "w+b"},
    {in | out | append | binary, "a+b"},
};

const char* modeStringOf(unsigned key)
{
    for (const ModeString& m : modeTable)
        if (m.key == key)
            return m.mode;
    return nullptr;
}

// The character as the get area holds it, sign-extended the way a plain char converts.
std::streambuf::int_type signExtended(char c)
{
    return static_cast<signed char>(c);
}
} // namespace

unsigned ubModeOf(std::ios_base::openmode mode)
{
    unsigned m = 0;
    if (mode & std::ios_base::in)
        m |= ubMode::in;
    if (mode & std::ios_base::out)
        m |= ubMode::out;
    if (mode & std::ios_base::ate)
        m |= ubMode::atEnd;
    if (mode & std::ios_base::app)
        m |= ubMode::append;
    if (mode & std::ios_base::trunc)
        m |= ubMode::truncate;
    if (mode & std::ios_base::binary)
        m |= ubMode::binary;
    return m;
}

ubFileBuffer::ubFileBuffer() : file_(nullptr), cell_(0) {}

ubFileBuffer::~ubFileBuffer()
{
    close();
}

bool ubFileBuffer::open(const char* name, unsigned mode)
{
    if (file_ || !name)
        return false;
    if (mode & noCreate)
        mode |= in;
    if (mode & append)
        mode |= out;
    unsigned key = mode & ~(atEnd | noCreate | noReplace);
    const char* modeString = modeStringOf(key);
    if (!modeString)
        return false;
    if ((mode & noReplace) && (key & out)) {
        if (std::FILE* existing = utOpenFile(name, "r")) {
            std::fclose(existing);
            return false;
        }
    }
    std::FILE* f = utOpenFile(name, modeString);
    if (!f)
        return false;
    if ((mode & atEnd) && std::fseek(f, 0, SEEK_END) != 0) {
        // the handle is dropped with the file, so nothing can use it closed
        std::fclose(f);
        return false;
    }
    file_ = f;
    setg(nullptr, nullptr, nullptr);
    return true;
}

bool ubFileBuffer::close()
{
    if (!file_)
        return false;
    bool ok = std::fclose(file_) == 0;
    file_ = nullptr;
    setg(nullptr, nullptr, nullptr);
    return ok;
}

ubFileBuffer::int_type ubFileBuffer::overflow(int_type ch)
{
    if (traits_type::eq_int_type(ch, traits_type::eof()))
        return 1;
    if (pptr() && pptr() < epptr()) {
        *pptr() = traits_type::to_char_type(ch);
        pbump(1);
        return ch;
    }
    if (!file_)
        return traits_type::eof();
    char byte = traits_type::to_char_type(ch);
    return std::fwrite(&byte, 1, 1, file_) < 1 ? traits_type::eof() : ch;
}

ubFileBuffer::int_type ubFileBuffer::uflow()
{
    if (gptr() && gptr() < egptr()) {
        char c = *gptr();
        gbump(1);
        return signExtended(c);
    }
    if (!file_)
        return traits_type::eof();
    unsigned char byte;
    if (std::fread(&byte, 1, 1, file_) < 1)
        return traits_type::eof();
    cell_ = static_cast<char>(byte);
    return byte;
}

ubFileBuffer::int_type ubFileBuffer::underflow()
{
    if (gptr() && gptr() < egptr())
        return signExtended(*gptr());
    int_type c = uflow();
    if (traits_type::eq_int_type(c, traits_type::eof()))
        return c;
    pbackfail(c);
    return c;
}

ubFileBuffer::int_type ubFileBuffer::pbackfail(int_type ch)
{
    bool isEof = traits_type::eq_int_type(ch, traits_type::eof());
    if (eback() && eback() < gptr() && (isEof || traits_type::to_char_type(ch) == gptr()[-1])) {
        gbump(-1);
        return isEof ? 0 : ch;
    }
    if (!file_ || isEof)
        return traits_type::eof();
    cell_ = traits_type::to_char_type(ch);
    setg(&cell_, &cell_, &cell_ + 1);
    return ch;
}

ubFileBuffer::pos_type ubFileBuffer::seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode)
{
    if (!file_)
        return pos_type(off_type(-1));
    if (direction == std::ios_base::cur && gptr())
        offset -= egptr() - gptr();
    if (!(direction == std::ios_base::cur && offset == 0)) {
        int whence = direction == std::ios_base::beg ? SEEK_SET : direction == std::ios_base::cur ? SEEK_CUR : SEEK_END;
        if (std::fseek(file_, static_cast<long>(offset), whence) != 0)
            return pos_type(off_type(-1));
        setg(nullptr, nullptr, nullptr);
    }
    return pos_type(off_type(std::ftell(file_)));
}

ubFileBuffer::pos_type ubFileBuffer::seekpos(pos_type position, std::ios_base::openmode)
{
    if (!file_)
        return pos_type(off_type(-1));
    if (std::fseek(file_, static_cast<long>(off_type(position)), SEEK_SET) != 0)
        return pos_type(off_type(-1));
    return pos_type(off_type(std::ftell(file_)));
}

int ubFileBuffer::sync()
{
    if (!file_)
        return 0;
    overflow(traits_type::eof());
    return std::fflush(file_) < 0 ? -1 : 0;
}
