// Pieces of a text for the edit view: converted one by one they give the whole text's conversion, so no
// cut splits a CR-LF pair or a UTF-8 character, and each piece stays within the wanted size.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "document/qwzEditText.h"
#include "document/qwzTextPieces.h"

namespace
{

std::u16string convert(const std::string& utf8)
{
    qwzEditText text;
    EXPECT_TRUE(text.assign(utf8.data(), utf8.size()));
    return std::u16string(text.text(), text.size());
}

std::vector<std::string> pieces(const std::string& text, std::size_t wanted)
{
    std::vector<std::string> out;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t n = qwzTextPieces::cut(text.data() + at, text.size() - at, wanted);
        EXPECT_GT(n, 0u) << "no progress at " << at;
        if (n == 0)
            break;
        out.push_back(text.substr(at, n));
        at += n;
    }
    return out;
}

// A character, a CR-LF pair, or a byte with the bytes that are not UTF-8 after it.
bool oneCharacter(const std::string& piece)
{
    return piece == "\r\n" || std::all_of(piece.begin() + 1, piece.end(),
                                          [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; });
}

struct CutCase {
    const char* name;
    std::string text;
    std::size_t wanted;
    std::vector<std::string> pieces;
};

TEST(TextPieces, CutsAtLineEndsThenCharacterBoundaries)
{
    const std::string euro = "\xE2\x82\xAC";      // 3 bytes
    const std::string smile = "\xF0\x9F\x98\x80"; // 4 bytes
    const CutCase cases[] = {
        {"empty", "", 8, {}},
        {"fits whole", "abc\ndef", 8, {"abc\ndef"}},
        {"after the last line end in the second half", "aaaa\nbbbb\ncc", 10, {"aaaa\nbbbb\n", "cc"}},
        {"a line end in the first half is too early", "a\nbbbbbbbbbb", 8, {"a\nbbbbbb", "bbbb"}},
        {"CR-LF stays together", "abcdefg\r\nxy", 8, {"abcdefg", "\r\nxy"}},
        {"CR-LF ending exactly at the size", "abcdef\r\nxy", 8, {"abcdef\r\n", "xy"}},
        {"a lone CR may end a piece", "abcdefg\rxyz", 8, {"abcdefg\r", "xyz"}},
        {"three-byte character not split", "abcdef" + euro + "z", 8, {"abcdef", euro + "z"}},
        {"four-byte character not split", "abcde" + smile + "z", 8, {"abcde", smile + "z"}},
        {"a piece smaller than a character holds the character", smile + smile, 2, {smile, smile}},
        {"a piece of one byte holds a CR-LF pair", "\r\n\r\n", 1, {"\r\n", "\r\n"}},
        {"a run of bytes that are not UTF-8 stays whole",
         "ab" + std::string(10, '\x80') + "cd",
         4,
         {"a", "b" + std::string(10, '\x80'), "cd"}},
    };
    for (const CutCase& c : cases)
        EXPECT_EQ(pieces(c.text, c.wanted), c.pieces) << c.name;
}

// Random texts built from the awkward parts (line ends of every kind, characters of 1 to 4 bytes, bytes
// that are not UTF-8), cut at random sizes: the pieces converted one by one equal the whole converted.
TEST(TextPieces, PiecesConvertToTheWholeText)
{
    std::mt19937 rng(20261125);
    const std::string parts[] = {"a",
                                 "b c",
                                 "\n",
                                 "\r\n",
                                 "\r",
                                 "\xC3\xA9",
                                 "\xE6\x97\xA5",
                                 "\xF0\x9F\x98\x80",
                                 "\x80",
                                 "\xE2\x82",
                                 "\xFF",
                                 "%",
                                 "\x80\x80\x80\x80\x80",
                                 std::string(1, '\0')};
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int n = rng() % 80; n > 0; --n)
            text += parts[rng() % std::size(parts)];
        const std::size_t wanted = 1 + rng() % 24;
        std::u16string joined;
        for (const std::string& piece : pieces(text, wanted)) {
            ASSERT_TRUE(piece.size() <= wanted || oneCharacter(piece)) << "piece of " << piece.size();
            joined += convert(piece);
        }
        ASSERT_EQ(joined, convert(text)) << "wanted " << wanted << ", text of " << text.size() << " bytes";
    }
}

// A log of long lines in big pieces: each piece is whole lines and not less than half the wanted size.
TEST(TextPieces, BigPiecesOfALogAreWholeLines)
{
    std::string log;
    for (int i = 0; i < 20000; ++i)
        log += "2026-11-25 12:00:00 [INFO ] solver.mesh step " + std::to_string(i) + " converged \xE6\x97\xA5\n";
    const std::size_t wanted = 64 * 1024;
    std::vector<std::string> cut = pieces(log, wanted);
    ASSERT_GT(cut.size(), 10u);
    for (std::size_t i = 0; i + 1 < cut.size(); ++i) {
        EXPECT_EQ(cut[i].back(), '\n') << "piece " << i;
        EXPECT_GE(cut[i].size(), wanted / 2) << "piece " << i;
        EXPECT_LE(cut[i].size(), wanted) << "piece " << i;
    }
}

} // namespace
