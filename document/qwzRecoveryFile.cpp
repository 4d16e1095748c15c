// Recovery records. The parser trusts nothing in the file: each header line is found within the bytes
// left, each number is checked against its limit before it is used, and the text must fill the rest of
// the file exactly.
#include "document/qwzRecoveryFile.h"

#include <cstdio>
#include <cstring>
#include <memory>

#include "foundation/utTextConversion.h"

namespace
{

const char magic[] = "QUILLON-RECOVERY 1";
struct EncodingName {
    utEncoding encoding;
    const char* name;
};
const EncodingName encodings[] = {{utEncoding::Utf8, "UTF-8"},
                                  {utEncoding::Utf8Bom, "UTF-8-BOM"},
                                  {utEncoding::Utf16LE, "UTF-16LE"},
                                  {utEncoding::Utf16BE, "UTF-16BE"}};

// Reads one header line "<key>: <value>\n" at `pos`; false when the line or its key is not there.
bool headerLine(const char* data, std::size_t size, std::size_t& pos, const char* key, std::string& value)
{
    std::size_t keyLength = std::strlen(key);
    if (keyLength + 2 > size - pos || std::memcmp(data + pos, key, keyLength) != 0 || data[pos + keyLength] != ':' ||
        data[pos + keyLength + 1] != ' ')
        return false;
    std::size_t start = pos + keyLength + 2;
    const void* end = std::memchr(data + start, '\n', size - start);
    if (!end)
        return false;
    std::size_t stop = static_cast<std::size_t>(static_cast<const char*>(end) - data);
    value.assign(data + start, stop - start);
    pos = stop + 1;
    return value.find('\0') == std::string::npos && value.find('\r') == std::string::npos;
}

// Plain decimal digits, at most `limit`.
bool number(const std::string& text, std::size_t limit, std::size_t& out)
{
    if (text.empty() || text.size() > 19)
        return false;
    out = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return false;
        std::size_t digit = static_cast<std::size_t>(c - '0');
        if (digit > limit || out > (limit - digit) / 10)
            return false;
        out = out * 10 + digit;
    }
    return true;
}

struct FileCloser {
    void operator()(std::FILE* f) const
    {
        std::fclose(f);
    }
};

} // namespace

const char* qwzRecoveryFile::encodingName(utEncoding encoding)
{
    for (const EncodingName& known : encodings)
        if (known.encoding == encoding)
            return known.name;
    return encodings[0].name;
}

bool qwzRecoveryFile::encodingFromName(const std::string& name, utEncoding& encoding)
{
    for (const EncodingName& known : encodings)
        if (name == known.name) {
            encoding = known.encoding;
            return true;
        }
    return false;
}

bool qwzRecoveryFile::format(const std::string& path, utEncoding encoding, std::size_t caret, const char16_t* text,
                             std::size_t units, std::string& out)
{
    if (path.find_first_of("\r\n", 0, 2) != std::string::npos || path.find('\0') != std::string::npos ||
        units > 0x7FFFFFFE)
        return false;
    utUtf16ToUtf8 utf8(units ? text : u"", static_cast<int>(units));
    out.clear();
    out.reserve(path.size() + 96 + static_cast<std::size_t>(utf8.length()));
    out += magic;
    out += "\npath: " + path;
    out += "\nencoding: ";
    out += encodingName(encoding);
    out += "\ncaret: " + std::to_string(caret > units ? units : caret);
    out += "\nlength: " + std::to_string(utf8.length());
    out += "\n\n";
    out.append(utf8.c_str(), static_cast<std::size_t>(utf8.length()));
    return true;
}

qwzRecoveryFile::ParseResult qwzRecoveryFile::parse(const char* data, std::size_t size, qwzRecoveryRecord& record)
{
    const std::size_t magicLength = sizeof magic - 1;
    if (!data || size < magicLength + 1 || std::memcmp(data, magic, magicLength) != 0 || data[magicLength] != '\n')
        return ParseResult::NotRecovery;
    std::size_t pos = magicLength + 1;
    std::string encoding, caret, length;
    if (!headerLine(data, size, pos, "path", record.path) || !headerLine(data, size, pos, "encoding", encoding) ||
        !headerLine(data, size, pos, "caret", caret) || !headerLine(data, size, pos, "length", length))
        return ParseResult::Damaged;
    if (pos >= size || data[pos] != '\n')
        return ParseResult::Damaged;
    ++pos;
    std::size_t textLength = 0;
    if (!encodingFromName(encoding, record.encoding) || !number(length, size - pos, textLength) ||
        textLength != size - pos || !number(caret, textLength, record.caret))
        return ParseResult::Damaged;
    record.text.assign(data + pos, textLength);
    return ParseResult::Ok;
}

qwzRecoveryFile::ParseResult qwzRecoveryFile::read(const char* utf8Name, qwzRecoveryRecord& record)
{
    std::unique_ptr<std::FILE, FileCloser> file(utOpenFile(utf8Name, "rb"));
    if (!file || std::fseek(file.get(), 0, SEEK_END) != 0)
        return ParseResult::NotRecovery;
    long long length = std::ftell(file.get());
    if (length < 0 || static_cast<unsigned long long>(length) > maxFileSize || std::fseek(file.get(), 0, SEEK_SET) != 0)
        return ParseResult::NotRecovery;
    std::string bytes(static_cast<std::size_t>(length), '\0');
    if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
        return ParseResult::NotRecovery;
    return parse(bytes.data(), bytes.size(), record);
}
