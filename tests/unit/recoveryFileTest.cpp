// The recovery file, written to disk and read back through the same calls Quillon uses: what a record
// keeps, and every way a file left by a crash, a full disk or someone else is refused.
#include <gtest/gtest.h>

#include <string>

#include "document/qwzRecoveryFile.h"
#include "testSupport.h"

namespace
{

using Result = qwzRecoveryFile::ParseResult;

std::string formatted(const std::string& path, utEncoding encoding, size_t caret, const std::u16string& text)
{
    std::string out;
    EXPECT_TRUE(qwzRecoveryFile::format(path, encoding, caret, text.data(), text.size(), out));
    return out;
}

Result readBack(const std::string& bytes, qwzRecoveryRecord& record)
{
    std::string file = qt::scratchDir("recovery") + "/r.qrf";
    qt::writeFile(file, bytes);
    return qwzRecoveryFile::read(qt::hostPath(file).c_str(), record);
}

} // namespace

TEST(RecoveryFile, KeepsPathEncodingCaretAndTextThroughAFile)
{
    struct Case {
        std::string path;
        utEncoding encoding;
        size_t caret;
        std::u16string text;
        std::string utf8;
    } cases[] = {
        {"C:\\Notes\\Gr\xC3\xB6\xC3\x9F"
         "e.txt",
         utEncoding::Utf8, 4, u"line one\r\nline two", "line one\r\nline two"},
        {"", utEncoding::Utf16LE, 0, u"", ""},
        {"\\\\server\\share\\a b.log", utEncoding::Utf8Bom, 2, u"\u00e9\U0001F600x", "\xC3\xA9\xF0\x9F\x98\x80x"},
        {"D:\\x.txt", utEncoding::Utf16BE, 1, u"%s %n 100%", "%s %n 100%"},
    };
    for (const Case& c : cases) {
        qwzRecoveryRecord record;
        ASSERT_EQ(readBack(formatted(c.path, c.encoding, c.caret, c.text), record), Result::Ok) << c.path;
        EXPECT_EQ(record.path, c.path);
        EXPECT_TRUE(record.encoding == c.encoding) << qwzRecoveryFile::encodingName(record.encoding);
        EXPECT_EQ(record.caret, c.caret);
        EXPECT_EQ(record.text, c.utf8);
    }
}

TEST(RecoveryFile, WritesAHeaderAnEditorCanRead)
{
    std::string bytes = formatted("C:\\a.txt", utEncoding::Utf8, 99, u"ab");
    // a caret past the end is kept at the end
    EXPECT_EQ(bytes, "QUILLON-RECOVERY 1\npath: C:\\a.txt\nencoding: UTF-8\ncaret: 2\nlength: 2\n\nab");
}

TEST(RecoveryFile, RefusesWhatItCouldNotReadBack)
{
    std::string out;
    const std::u16string text = u"x";
    EXPECT_FALSE(qwzRecoveryFile::format("C:\\a\nb.txt", utEncoding::Utf8, 0, text.data(), 1, out));
    EXPECT_FALSE(qwzRecoveryFile::format("C:\\a\rb.txt", utEncoding::Utf8, 0, text.data(), 1, out));
}

TEST(RecoveryFile, RefusesDamagedFiles)
{
    const std::string good = formatted("C:\\a.txt", utEncoding::Utf8, 1, u"hello");
    static const char nulInPath[] = "QUILLON-RECOVERY 1\npath: a\0b\nencoding: UTF-8\ncaret: 0\nlength: 0\n\n";
    struct Case {
        const char* why;
        std::string bytes;
        Result expected;
    } cases[] = {
        {"empty", "", Result::NotRecovery},
        {"another file", "hello world\n", Result::NotRecovery},
        {"magic without its line end", "QUILLON-RECOVERY 1", Result::NotRecovery},
        {"a later version", "QUILLON-RECOVERY 2\n", Result::NotRecovery},
        {"cut in the header", good.substr(0, 30), Result::Damaged},
        {"cut in the text", good.substr(0, good.size() - 1), Result::Damaged},
        {"longer than said", good + "!", Result::Damaged},
        {"no empty line", "QUILLON-RECOVERY 1\npath: \nencoding: UTF-8\ncaret: 0\nlength: 1\nx", Result::Damaged},
        {"lines out of order", "QUILLON-RECOVERY 1\nencoding: UTF-8\npath: \ncaret: 0\nlength: 0\n\n", Result::Damaged},
        {"unknown encoding", "QUILLON-RECOVERY 1\npath: \nencoding: KOI8\ncaret: 0\nlength: 0\n\n", Result::Damaged},
        {"negative caret", "QUILLON-RECOVERY 1\npath: \nencoding: UTF-8\ncaret: -1\nlength: 0\n\n", Result::Damaged},
        {"caret past the text", "QUILLON-RECOVERY 1\npath: \nencoding: UTF-8\ncaret: 2\nlength: 1\n\nx",
         Result::Damaged},
        {"length that overflows",
         "QUILLON-RECOVERY 1\npath: \nencoding: UTF-8\ncaret: 0\nlength: 18446744073709551617\n\nx", Result::Damaged},
        {"length with a sign", "QUILLON-RECOVERY 1\npath: \nencoding: UTF-8\ncaret: 0\nlength: +1\n\nx",
         Result::Damaged},
        {"CR-LF header", "QUILLON-RECOVERY 1\npath: \r\nencoding: UTF-8\ncaret: 0\nlength: 0\n\n", Result::Damaged},
        {"NUL in the path", std::string(nulInPath, sizeof nulInPath - 1), Result::Damaged},
    };
    for (const Case& c : cases) {
        qwzRecoveryRecord record;
        EXPECT_EQ(readBack(c.bytes, record), c.expected) << c.why;
    }
}

TEST(RecoveryFile, AMissingFileIsNoRecovery)
{
    qwzRecoveryRecord record;
    std::string missing = qt::scratchDir("recovery-missing") + "/none.qrf";
    EXPECT_EQ(qwzRecoveryFile::read(qt::hostPath(missing).c_str(), record), Result::NotRecovery);
}
