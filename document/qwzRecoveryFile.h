// The recovery file: the unsaved text of a document with what is needed to bring it back. A short
// header of text lines, then the text itself as UTF-8, so that the file also reads in any editor:
//
//   QUILLON-RECOVERY 1
//   path: <the document's path, UTF-8; empty for Untitled>
//   encoding: UTF-8 | UTF-8-BOM | UTF-16LE | UTF-16BE
//   caret: <caret position in UTF-16 units>
//   length: <bytes of text>
//   <empty line>
//   <exactly `length` bytes of text>
//
// A file is taken only when every line is there in this order, the numbers are plain decimal within
// range, and the text is exactly `length` bytes long: a file cut short by a crash is refused as a whole.
#pragma once

#include <cstddef>
#include <string>

#include "foundation/utTextEncoding.h"

struct qwzRecoveryRecord {
    std::string path;
    utEncoding encoding = utEncoding::Utf8;
    std::size_t caret = 0;
    std::string text;
};

class qwzRecoveryFile
{
public:
    enum class ParseResult { Ok, NotRecovery, Damaged };

    // The name a record gives an encoding, and back; false for a name that is none of the four.
    static const char* encodingName(utEncoding encoding);
    static bool encodingFromName(const std::string& name, utEncoding& encoding);

    // The file's bytes for a record whose text is still UTF-16 (as the edit control holds it); the
    // conversion to UTF-8 is done here, off the user-interface thread. False when the path holds a line
    // break (no Windows path does, and the header could not be read back).
    static bool format(const std::string& path, utEncoding encoding, std::size_t caret, const char16_t* text,
                       std::size_t units, std::string& out);

    // Reads `size` bytes of a recovery file into `record`; anything but Ok leaves `record` unspecified.
    static ParseResult parse(const char* data, std::size_t size, qwzRecoveryRecord& record);

    // Reads and parses the file named `utf8Name`; NotRecovery when it cannot be read.
    static ParseResult read(const char* utf8Name, qwzRecoveryRecord& record);

    // The longest file read() takes: the edit control's limit in UTF-8 bytes (3 a unit at most), and the header.
    static constexpr std::size_t maxFileSize = std::size_t(0x7FFFFFFE) * 3 + 4096;
};
