// A reader of printf conversions that knows only C's: what it cannot place is refused, since a
// conversion the C library reads differently from us would shift every argument after it.
#include "nls/nlsPrintfFormat.h"

namespace
{

using Argument = nlsPrintfFormat::Argument;

enum Length { Plain, Char, Short, Long, LongLong, IntMax, Size, PtrDiff, LongDouble };

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isFlag(char c)
{
    return c == '-' || c == '+' || c == ' ' || c == '#' || c == '0';
}

Length readLength(const char*& p)
{
    switch (*p) {
    case 'h':
        ++p;
        return *p == 'h' ? (++p, Char) : Short;
    case 'l':
        ++p;
        return *p == 'l' ? (++p, LongLong) : Long;
    case 'j':
        return ++p, IntMax;
    case 'z':
        return ++p, Size;
    case 't':
        return ++p, PtrDiff;
    case 'L':
        return ++p, LongDouble;
    default:
        return Plain;
    }
}

// The argument of an integer conversion; false for "L", which C gives to floating point only.
bool integer(Length length, bool isSigned, Argument& argument)
{
    switch (length) {
    case Plain:
    case Char:
    case Short:
        argument = isSigned ? nlsPrintfFormat::Int : nlsPrintfFormat::UnsignedInt;
        return true;
    case Long:
        argument = isSigned ? nlsPrintfFormat::Long : nlsPrintfFormat::UnsignedLong;
        return true;
    case LongLong:
        argument = isSigned ? nlsPrintfFormat::LongLong : nlsPrintfFormat::UnsignedLongLong;
        return true;
    case IntMax:
        argument = isSigned ? nlsPrintfFormat::IntMax : nlsPrintfFormat::UnsignedIntMax;
        return true;
    case Size:
        argument = isSigned ? nlsPrintfFormat::SignedSize : nlsPrintfFormat::Size;
        return true;
    case PtrDiff:
        argument = nlsPrintfFormat::PtrDiff;
        return true;
    case LongDouble:
        break;
    }
    return false;
}

// The argument that conversion letter `c` with `length` reads; false for %n and every letter or
// pairing outside C's.
bool conversion(char c, Length length, Argument& argument)
{
    switch (c) {
    case 'd':
    case 'i':
        return integer(length, true, argument);
    case 'o':
    case 'u':
    case 'x':
    case 'X':
        return integer(length, false, argument);
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
        if (length != Plain && length != Long && length != LongDouble)
            return false;
        argument = length == LongDouble ? nlsPrintfFormat::LongDouble : nlsPrintfFormat::Double;
        return true;
    case 'c':
    case 's':
        if (length != Plain && length != Long)
            return false;
        if (c == 'c')
            argument = length == Long ? nlsPrintfFormat::WideChar : nlsPrintfFormat::Char;
        else
            argument = length == Long ? nlsPrintfFormat::WideString : nlsPrintfFormat::String;
        return true;
    case 'p':
        argument = nlsPrintfFormat::Pointer;
        return length == Plain;
    default:
        return false;
    }
}

// One conversion, `p` just past its "%": flags, width, precision, length and letter. A width's digits
// followed by "$" number the argument, which the program's formats never do.
bool readConversion(const char*& p, std::vector<Argument>& out)
{
    while (isFlag(*p))
        ++p;
    if (*p == '*') {
        out.push_back(nlsPrintfFormat::Int);
        ++p;
    } else {
        while (isDigit(*p))
            ++p;
        if (*p == '$')
            return false;
    }
    if (*p == '.') {
        ++p;
        if (*p == '*') {
            out.push_back(nlsPrintfFormat::Int);
            ++p;
        } else {
            while (isDigit(*p))
                ++p;
        }
    }
    Length length = readLength(p);
    Argument argument;
    if (!*p || !conversion(*p, length, argument))
        return false;
    ++p;
    out.push_back(argument);
    return true;
}

} // namespace

bool nlsPrintfFormat::arguments(const char* format, std::vector<Argument>& out)
{
    out.clear();
    if (!format)
        return true;
    for (const char* p = format; *p;) {
        if (*p++ != '%')
            continue;
        if (*p == '%') {
            ++p;
            continue;
        }
        if (!readConversion(p, out))
            return false;
    }
    return true;
}

bool nlsPrintfFormat::sameArguments(const char* english, const char* translation)
{
    std::vector<Argument> wanted, given;
    return arguments(english, wanted) && arguments(translation, given) && wanted == given;
}
