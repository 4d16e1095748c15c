// Which encoding a file's first bytes show, decoding to UTF-8 however the bytes arrive, and the bytes a
// text is saved as.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "foundation/utTextEncoding.h"

namespace
{

using namespace std::string_literals;

std::string hex(const std::string& s)
{
    std::string out;
    char buf[4];
    for (unsigned char c : s) {
        std::snprintf(buf, sizeof buf, "%02X ", c);
        out += buf;
    }
    return out;
}

const char* nameOf(utEncoding e)
{
    switch (e) {
    case utEncoding::Utf8:
        return "Utf8";
    case utEncoding::Utf8Bom:
        return "Utf8Bom";
    case utEncoding::Utf16LE:
        return "Utf16LE";
    case utEncoding::Utf16BE:
        return "Utf16BE";
    }
    return "?";
}

// A text of `pairs` characters, each `unit` as UTF-16LE, with `tail` after it.
std::string utf16le(std::size_t pairs, char unit, const std::string& tail = "")
{
    std::string s;
    for (std::size_t i = 0; i < pairs; ++i)
        s += std::string{unit, '\0'};
    return s + tail;
}

TEST(utProbeText, MarksEvidenceAndNulBytes)
{
    struct Case {
        const char* name;
        std::string in;
        bool isText;
        utEncoding encoding;
        std::size_t markLength;
    } cases[] = {
        {"empty", "", true, utEncoding::Utf8, 0},
        {"plain UTF-8", "caf\xC3\xA9\r\n", true, utEncoding::Utf8, 0},
        {"invalid UTF-8 is still text", "\xFF\xC3(", true, utEncoding::Utf8, 0},
        {"UTF-8 mark only", "\xEF\xBB\xBF", true, utEncoding::Utf8Bom, 3},
        {"UTF-8 mark", "\xEF\xBB\xBFtext", true, utEncoding::Utf8Bom, 3},
        {"UTF-8 mark cut short", "\xEF\xBB", true, utEncoding::Utf8, 0},
        {"UTF-8 mark with NUL after it",
         "\xEF\xBB\xBF"
         "a\0b"s,
         false, utEncoding::Utf8Bom, 3},
        {"UTF-16LE mark only", "\xFF\xFE", true, utEncoding::Utf16LE, 2},
        {"UTF-16LE mark",
         "\xFF\xFE"
         "a\0"s,
         true, utEncoding::Utf16LE, 2},
        {"UTF-16LE mark, odd length",
         "\xFF\xFE"
         "a\0b"s,
         true, utEncoding::Utf16LE, 2},
        {"UTF-16LE mark, NUL unit",
         "\xFF\xFE"
         "a\0\0\0"s,
         false, utEncoding::Utf16LE, 2},
        {"UTF-32LE mark is a NUL unit", "\xFF\xFE\0\0"s, false, utEncoding::Utf16LE, 2},
        {"UTF-16BE mark only", "\xFE\xFF", true, utEncoding::Utf16BE, 2},
        {"UTF-16BE mark", "\xFE\xFF\0a\x65\xE5"s, true, utEncoding::Utf16BE, 2},
        {"UTF-16BE mark, NUL unit", "\xFE\xFF\0\0"s, false, utEncoding::Utf16BE, 2},
        {"BOM-less UTF-16LE", "h\0i\0\r\0\n\0"s, true, utEncoding::Utf16LE, 0},
        {"BOM-less UTF-16BE", "\0h\0i\0\r\0\n"s, true, utEncoding::Utf16BE, 0},
        {"BOM-less Latin-1 range in UTF-16LE", "\xFC\0"s, true, utEncoding::Utf16LE, 0},
        {"odd length is not UTF-16", "h\0i\0!"s, false, utEncoding::Utf8, 0},
        {"NUL unit is not UTF-16", "h\0\0\0"s, false, utEncoding::Utf8, 0},
        {"a character past U+00FF breaks the evidence", "h\0\xE5\x65"s, false, utEncoding::Utf8, 0},
        {"binary",
         "\x7F"
         "ELF\x02\x01\x01\0\0\0"s,
         false, utEncoding::Utf8, 0},
        {"one NUL", "\0"s, false, utEncoding::Utf8, 0},
        {"two NULs", "\0\0"s, false, utEncoding::Utf8, 0},
        // sentences that a detector counting byte statistics calls UTF-16: they hold no NUL
        {"this app can break", "this app can break", true, utEncoding::Utf8, 0},
        {"Bush hid the facts", "Bush hid the facts", true, utEncoding::Utf8, 0},
        {"acre vai ver o rio", "acre vai ver o rio", true, utEncoding::Utf8, 0},
        {"hhhh hhh hhh hhhhh", "hhhh hhh hhh hhhhh", true, utEncoding::Utf8, 0},
        {"Latin-1 letters",
         "caf\xE9 cr\xE8me br\xFBl\xE9"
         "e",
         true, utEncoding::Utf8, 0},
        {"two bytes like a mark-less unit", "\xFF\x01", true, utEncoding::Utf8, 0},
    };
    for (const Case& c : cases) {
        utTextProbe p = utProbeText(c.in.data(), c.in.size());
        EXPECT_EQ(p.isText, c.isText) << c.name;
        EXPECT_STREQ(nameOf(p.encoding), nameOf(c.encoding)) << c.name;
        EXPECT_EQ(p.markLength, c.markLength) << c.name;
    }
}

TEST(utProbeText, LooksAtTheFirst64KiBOnly)
{
    const std::size_t window = 64 * 1024;
    // the evidence must hold over the whole window...
    std::string brokenInside = utf16le(window / 2 - 1, 'x', "y!");
    utTextProbe p = utProbeText(brokenInside.data(), brokenInside.size());
    EXPECT_FALSE(p.isText);
    // ...and what follows it is not looked at: the decoder and the document judge the rest
    std::string brokenAfter = utf16le(window / 2, 'x', "y!\0\0"s);
    p = utProbeText(brokenAfter.data(), brokenAfter.size());
    EXPECT_TRUE(p.isText);
    EXPECT_STREQ(nameOf(p.encoding), "Utf16LE");
    // ...but the length of all that was given must be even
    p = utProbeText(brokenAfter.data(), brokenAfter.size() - 1);
    EXPECT_FALSE(p.isText);

    std::string nulAfter = std::string(window, 'a') + "\0"s;
    EXPECT_TRUE(utProbeText(nulAfter.data(), nulAfter.size()).isText);
    std::string nulLast = std::string(window - 1, 'a') + "\0"s;
    EXPECT_FALSE(utProbeText(nulLast.data(), nulLast.size()).isText);
}

struct DecodeCase {
    const char* name;
    utEncoding encoding;
    std::string in;
    std::string out;
    bool exact;
};

const std::string fffd = "\xEF\xBF\xBD";

const DecodeCase decodeCases[] = {
    {"LE empty", utEncoding::Utf16LE, "", "", true},
    {"LE ascii and CR-LF", utEncoding::Utf16LE, "a\0\r\0\n\0"s, "a\r\n", true},
    {"LE two bytes", utEncoding::Utf16LE, "\xFC\0\xFF\x07"s, "\xC3\xBC\xDF\xBF", true},
    {"LE three bytes", utEncoding::Utf16LE, "\x00\x08\xE5\x65\x2C\x67\x9E\x8A\xFF\xFF"s,
     "\xE0\xA0\x80\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\xEF\xBF\xBF", true},
    {"LE pair", utEncoding::Utf16LE, "\x3D\xD8\x00\xDE"s, "\xF0\x9F\x98\x80", true},
    {"LE highest pair", utEncoding::Utf16LE, "\xFF\xDB\xFF\xDF", "\xF4\x8F\xBF\xBF", true},
    {"LE NUL unit passes", utEncoding::Utf16LE, "\0\0"s, "\0"s, true},
    {"LE odd last byte", utEncoding::Utf16LE, "a\0b"s, "a" + fffd, false},
    {"LE one byte", utEncoding::Utf16LE, "a", fffd, false},
    {"LE high at the end", utEncoding::Utf16LE, "a\0\x3D\xD8"s, "a" + fffd, false},
    {"LE high then letter", utEncoding::Utf16LE, "\x3D\xD8x\0"s, fffd + "x", false},
    {"LE high then a character past U+07FF", utEncoding::Utf16LE, "\x3D\xD8\xE5\x65", fffd + "\xE6\x97\xA5", false},
    {"LE high then odd byte", utEncoding::Utf16LE, "\x3D\xD8x"s, fffd + fffd, false},
    {"LE lone low", utEncoding::Utf16LE,
     "\x00\xDE"
     "b\0"s,
     fffd + "b", false},
    {"LE two lows", utEncoding::Utf16LE, "\x00\xDE\x01\xDE"s, fffd + fffd, false},
    {"LE two highs then low", utEncoding::Utf16LE, "\x3D\xD8\x3D\xD8\x00\xDE"s, fffd + "\xF0\x9F\x98\x80", false},
    {"LE low then high reversed", utEncoding::Utf16LE, "\x00\xDE\x3D\xD8"s, fffd + fffd, false},
    {"LE U+FFFD itself is exact", utEncoding::Utf16LE, "\xFD\xFF", fffd, true},
    {"BE ascii", utEncoding::Utf16BE, "\0h\0i"s, "hi", true},
    {"BE three bytes", utEncoding::Utf16BE, "\x65\xE5", "\xE6\x97\xA5", true},
    {"BE pair", utEncoding::Utf16BE, "\xD8\x3D\xDE\x00"s, "\xF0\x9F\x98\x80", true},
    {"BE odd last byte", utEncoding::Utf16BE, "\0h\0"s, "h" + fffd, false},
    {"BE high at the end", utEncoding::Utf16BE, "\xD8\x3D", fffd, false},
    {"BE lone low", utEncoding::Utf16BE, "\xDE\x00\0z"s, fffd + "z", false},
    {"UTF-8 passes", utEncoding::Utf8, "a\xC3\xBC\xE6\x97\xA5\xF0\x9F\x98\x80\r\n",
     "a\xC3\xBC\xE6\x97\xA5\xF0\x9F\x98\x80\r\n", true},
    // bad UTF-8 keeps its bytes: the edit text's conversion shows it and judges it
    {"UTF-8 invalid passes", utEncoding::Utf8, "\xFF\xC3(\x80", "\xFF\xC3(\x80", true},
    {"UTF-8 cut at the end passes", utEncoding::Utf8, "a\xF0\x9F\x98", "a\xF0\x9F\x98", true},
    {"UTF-8 mark form passes", utEncoding::Utf8Bom, "\xE6\x97\xA5", "\xE6\x97\xA5", true},
    {"UTF-8 empty", utEncoding::Utf8Bom, "", "", true},
};

std::string decodeWhole(utEncoding e, const std::string& in, bool& exact)
{
    utTextDecoder d(e);
    std::string out;
    d.decode(in.data(), in.size(), out);
    d.finish(out);
    exact = d.exact();
    return out;
}

TEST(utTextDecoder, DecodesAndReplacesWhatIsUnpaired)
{
    for (const DecodeCase& c : decodeCases) {
        bool exact = false;
        EXPECT_EQ(hex(decodeWhole(c.encoding, c.in, exact)), hex(c.out)) << c.name;
        EXPECT_EQ(exact, c.exact) << c.name;
    }
}

TEST(utTextDecoder, AnySplitGivesTheSameText)
{
    for (const DecodeCase& c : decodeCases) {
        // byte by byte
        utTextDecoder d(c.encoding);
        std::string out;
        for (char b : c.in)
            d.decode(&b, 1, out);
        d.finish(out);
        EXPECT_EQ(hex(out), hex(c.out)) << c.name << ", byte by byte";
        EXPECT_EQ(d.exact(), c.exact) << c.name << ", byte by byte";
        // every cut into two, with an empty call between
        for (std::size_t cut = 0; cut <= c.in.size(); ++cut) {
            utTextDecoder two(c.encoding);
            std::string got;
            two.decode(c.in.data(), cut, got);
            two.decode(nullptr, 0, got);
            two.decode(c.in.data() + cut, c.in.size() - cut, got);
            two.finish(got);
            EXPECT_EQ(hex(got), hex(c.out)) << c.name << ", cut at " << cut;
        }
    }
}

TEST(utTextDecoder, HoldsBackAnIncompleteCharacterUntilItsRest)
{
    struct Step {
        std::string in;
        std::string out; // what the call appends
    };
    struct Case {
        const char* name;
        utEncoding encoding;
        std::vector<Step> steps;
        std::string atFinish;
    } cases[] = {
        {"UTF-8 four bytes",
         utEncoding::Utf8,
         {{"a\xF0", "a"},
          {"\x9F", ""},
          {"\x98", ""},
          {"\x80"
           "b",
           "\xF0\x9F\x98\x80"
           "b"}},
         ""},
        {"UTF-8 three bytes then the end", utEncoding::Utf8Bom, {{"\xE6", ""}, {"\x97", ""}}, "\xE6\x97"},
        {"UTF-8 complete at the end", utEncoding::Utf8, {{"\xC3\xBC", "\xC3\xBC"}}, ""},
        {"UTF-8 bad lead is not held", utEncoding::Utf8, {{"\xFF", "\xFF"}, {"\x80", "\x80"}}, ""},
        {"UTF-8 stray continuations are not held", utEncoding::Utf8, {{"\x80\x80\x80\x80", "\x80\x80\x80\x80"}}, ""},
        {"LE pair byte by byte",
         utEncoding::Utf16LE,
         {{"\x3D", ""}, {"\xD8", ""}, {"\x00"s, ""}, {"\xDE", "\xF0\x9F\x98\x80"}},
         ""},
        {"LE odd byte across calls", utEncoding::Utf16LE, {{"a\0b"s, "a"}, {"\0"s, "b"}}, ""},
        {"LE high waits, then the end", utEncoding::Utf16LE, {{"\x3D\xD8", ""}}, fffd},
        {"BE high then letter", utEncoding::Utf16BE, {{"\xD8\x3D", ""}, {"\0x"s, fffd + "x"}}, ""},
    };
    for (const Case& c : cases) {
        utTextDecoder d(c.encoding);
        std::string out = "kept:";
        std::string expected = out;
        for (const Step& s : c.steps) {
            d.decode(s.in.data(), s.in.size(), out);
            expected += s.out;
            EXPECT_EQ(hex(out), hex(expected)) << c.name << ", after " << hex(s.in);
        }
        d.finish(out);
        EXPECT_EQ(hex(out), hex(expected + c.atFinish)) << c.name << ", at the end";
        // a finished decoder holds nothing more
        d.finish(out);
        EXPECT_EQ(hex(out), hex(expected + c.atFinish)) << c.name << ", second finish";
    }
}

TEST(utEncodeText, WritesTheMarkAndTheUnits)
{
    const std::u16string sample = u"a\u00FC\u65E5\U0001F600\r\n";
    struct Case {
        const char* name;
        std::u16string in;
        utEncoding encoding;
        std::string out;
    } cases[] = {
        {"UTF-8 empty", u"", utEncoding::Utf8, ""},
        {"UTF-8 mark only", u"", utEncoding::Utf8Bom, "\xEF\xBB\xBF"},
        {"UTF-16LE mark only", u"", utEncoding::Utf16LE, "\xFF\xFE"},
        {"UTF-16BE mark only", u"", utEncoding::Utf16BE, "\xFE\xFF"},
        {"UTF-8", sample, utEncoding::Utf8, "a\xC3\xBC\xE6\x97\xA5\xF0\x9F\x98\x80\r\n"},
        {"UTF-8 with mark", sample, utEncoding::Utf8Bom,
         "\xEF\xBB\xBF"
         "a\xC3\xBC\xE6\x97\xA5\xF0\x9F\x98\x80\r\n"},
        {"UTF-16LE", sample, utEncoding::Utf16LE,
         "\xFF\xFE"
         "a\0\xFC\0\xE5\x65\x3D\xD8\x00\xDE\r\0\n\0"s},
        {"UTF-16BE", sample, utEncoding::Utf16BE, "\xFE\xFF\0a\0\xFC\x65\xE5\xD8\x3D\xDE\x00\0\r\0\n"s},
        {"UTF-8 lone surrogate as the house writes it", std::u16string{u'x', char16_t(0xD800)}, utEncoding::Utf8, "x?"},
        {"UTF-16 lone surrogate kept", std::u16string{char16_t(0xDC00)}, utEncoding::Utf16LE, "\xFF\xFE\x00\xDC"s},
        {"NUL unit", std::u16string(1, u'\0'), utEncoding::Utf16BE, "\xFE\xFF\0\0"s},
    };
    for (const Case& c : cases)
        EXPECT_EQ(hex(utEncodeText(c.in, c.encoding)), hex(c.out)) << c.name;
}

TEST(utEncodeText, WhatIsSavedOpensAsTheSameTextInTheSameEncoding)
{
    const std::u16string text = u"\u00FC \u65E5\u672C\u8A9E \U0001F600\r\nsecond line\r\n";
    const std::string utf8 = "\xC3\xBC \xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E \xF0\x9F\x98\x80\r\nsecond line\r\n";
    for (utEncoding e : {utEncoding::Utf8, utEncoding::Utf8Bom, utEncoding::Utf16LE, utEncoding::Utf16BE}) {
        std::string file = utEncodeText(text, e);
        utTextProbe p = utProbeText(file.data(), file.size());
        EXPECT_TRUE(p.isText) << nameOf(e);
        EXPECT_STREQ(nameOf(p.encoding), nameOf(e));
        bool exact = false;
        EXPECT_EQ(hex(decodeWhole(p.encoding, file.substr(p.markLength), exact)), hex(utf8)) << nameOf(e);
        EXPECT_TRUE(exact) << nameOf(e);
    }
    // a BOM-less UTF-16 file keeps being read as UTF-16; saving it adds the mark
    std::string bomless = "o\0k\0"s;
    utTextProbe p = utProbeText(bomless.data(), bomless.size());
    bool exact = false;
    std::string shown = decodeWhole(p.encoding, bomless.substr(p.markLength), exact);
    EXPECT_EQ(shown, "ok");
    EXPECT_EQ(hex(utEncodeText(u"ok", p.encoding)), hex("\xFF\xFE"
                                                        "o\0k\0"s));
}

} // namespace
