// Reading the product file and composing its display texts. Invariant: every record is cut out of a
// std::string by index checks against its length, so no line, however long or malformed, is read
// past its end.
#include "foundation/utProductDescription.h"

#include <string>

#include "foundation/ubIFStream.h"

namespace
{
// Lines are read in pieces of this buffer's size less the NUL and joined.
constexpr int pieceBuffer = 1024;
constexpr bool is64Bit = sizeof(void*) == 8;

// The next logical line without its line feed; false when the read yields no text at all.
bool readLine(std::istream& in, std::string& line)
{
    line.clear();
    char piece[pieceBuffer];
    for (;;) {
        in.getline(piece, pieceBuffer);
        std::streamsize got = in.gcount();
        bool fullPiece = in.fail() && !in.eof() && got == pieceBuffer - 1;
        line.append(piece, static_cast<size_t>(fullPiece || in.fail() || in.eof() ? got : got - 1));
        if (!fullPiece)
            break;
        in.clear();
    }
    return !line.empty();
}

// Cuts "dKEYdVALUEd" at `line`; false when a delimiter is missing or a part is empty.
bool splitRecord(const std::string& line, std::string& key, std::string& value)
{
    char d = line[0];
    size_t keyEnd = line.find(d, 1);
    if (keyEnd == std::string::npos)
        return false;
    size_t valueEnd = line.find(d, keyEnd + 1);
    if (valueEnd == std::string::npos)
        return false;
    key = line.substr(1, keyEnd - 1);
    value = line.substr(keyEnd + 1, valueEnd - keyEnd - 1);
    return !key.empty() && !value.empty();
}
} // namespace

const utString utProductDescription::nameKey("name");
const utString utProductDescription::releaseKey("release");
const utString utProductDescription::servicePackKey("service pack");
const utString utProductDescription::typeKey("type");

utProductDescription::utProductDescription() : fields_(4, 50) {}

int utProductDescription::load(const char* fileName, const utString& extraText)
{
    if (!fileName || extraText.isNull())
        return utProductNullArgument;
    ubIFStream in(fileName, ubMode::in);
    if (!in.isOpen())
        return utProductNoFile;
    int format = 0;
    in >> format;
    if (in.fail())
        return utProductMalformed;
    if (format != 1)
        return utProductBadFormat;
    in >> std::ws;
    if (!readRecords(in))
        return utProductMalformed;
    return compose(extraText) ? utProductLoaded : utProductMalformed;
}

bool utProductDescription::readRecords(ubIFStream& in)
{
    std::string line, key, value;
    while (in.peek() != std::char_traits<char>::eof()) {
        if (!readLine(in, line))
            return false;
        // a line whose second character repeats its delimiter holds no record
        if (line.size() >= 2 && line[1] == line[0])
            continue;
        if (!splitRecord(line, key, value))
            return false;
        if (fields_.insert({utString::copyOf(key), utString::copyOf(value)}))
            return false;
    }
    return true;
}

bool utProductDescription::compose(const utString& extraText)
{
    utString name = value(nameKey), release = value(releaseKey), type = value(typeKey);
    utString servicePack = value(servicePackKey);
    if (name.isNull() || release.isNull() || type.isNull())
        return false;
    bool hasPack = !servicePack.isEmpty();
    utString space(" ");

    utString shortText = utString::copyOf(name.c_str()) + space + release;
    if (hasPack || is64Bit) {
        shortText += utString(" (");
        if (hasPack)
            shortText += servicePack;
        if (hasPack && is64Bit)
            shortText += space;
        if (is64Bit)
            shortText += utString("64-bit");
        shortText += utString(")");
    }

    utString longText = utString::copyOf(name.c_str()) + space + release + utString(" (");
    if (hasPack)
        longText += servicePack + space;
    if (type != utString("CR"))
        longText += type + space;
    longText += extraText;
    if (is64Bit)
        longText += utString(" 64-bit");
    longText += utString(")");

    shortText_ = shortText;
    longText_ = longText;
    return true;
}
