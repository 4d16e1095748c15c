// The product description file: result codes for real files written here, the composed texts, and
// lines of any length.
#include <gtest/gtest.h>

#include <string>

#include "foundation/utProductDescription.h"
#include "testSupport.h"

namespace
{

struct Loaded {
    int code;
    utProductDescription product;
};

void loadText(Loaded& out, const std::string& name, const std::string& bytes, const char* extra = "R1")
{
    std::string path = qt::scratchDir("utProductDescription") + "/" + name;
    qt::writeFile(path, bytes);
    out.code = out.product.load(path.c_str(), utString(extra));
}

TEST(utProductDescription, ResultCodes)
{
    struct Case {
        const char* name;
        std::string bytes;
        int code;
    } cases[] = {
        {"minimal", "1\n|name|Alpha|\n|release|2011|\n|type|CR|\n", utProductLoaded},
        {"no final line feed", "1\n|name|Alpha|\n|release|2011|\n|type|CR|", utProductLoaded},
        {"blank after the number", "  1 \n\n\t|name|Alpha|\n|release|2011|\n|type|CR|\n", utProductLoaded},
        {"CR-LF lines", "1\r\n|name|Alpha|\r\n|release|2011|\r\n|type|CR|\r\n", utProductLoaded},
        {"other delimiters", "1\n#name#Alpha#\n/release/2011/\n:type:CR:\n", utProductLoaded},
        {"skipped line", "1\n||\n|name|Alpha|\n##anything\n|release|2011|\n|type|CR|\n", utProductLoaded},
        {"text after the record", "1\n|name|Alpha|ignored\n|release|2011|\n|type|CR|\n", utProductLoaded},
        {"empty file", "", utProductMalformed},
        {"no number", "x\n|name|Alpha|\n", utProductMalformed},
        {"format 2", "2\n|name|Alpha|\n|release|2011|\n|type|CR|\n", utProductBadFormat},
        {"format 0", "0\n", utProductBadFormat},
        {"no closing delimiter", "1\n|name|Alpha\n|release|2011|\n|type|CR|\n", utProductMalformed},
        {"key only", "1\n|name\n", utProductMalformed},
        {"one character", "1\n|\n", utProductMalformed},
        {"empty key", "1\n|x||\n", utProductMalformed}, // "|x||": key x, empty value
        {"empty value", "1\n|name||\n|release|2011|\n|type|CR|\n", utProductMalformed},
        {"repeated key", "1\n|name|Alpha|\n|name|Beta|\n|release|2011|\n|type|CR|\n", utProductMalformed},
        {"missing type", "1\n|name|Alpha|\n|release|2011|\n", utProductMalformed},
        {"missing name", "1\n|release|2011|\n|type|CR|\n", utProductMalformed},
        {"blank line between records", "1\n|name|Alpha|\n\n|release|2011|\n|type|CR|\n", utProductMalformed},
        {"number only", "1\n", utProductMalformed},
    };
    for (const Case& c : cases) {
        Loaded l;
        loadText(l, "product", c.bytes);
        EXPECT_EQ(l.code, c.code) << c.name;
        if (c.code != utProductLoaded) {
            EXPECT_TRUE(l.product.shortText().isNull() && l.product.longText().isNull()) << c.name;
        }
    }
}

TEST(utProductDescription, MissingFileAndNullArguments)
{
    std::string dir = qt::scratchDir("utProductDescriptionMissing");
    utProductDescription p;
    EXPECT_EQ(p.load((dir + "/absent").c_str(), utString("R1")), utProductNoFile);
    EXPECT_EQ(p.load(nullptr, utString("R1")), utProductNullArgument);
    qt::writeFile(dir + "/product", "1\n|name|A|\n|release|1|\n|type|CR|\n");
    EXPECT_EQ(p.load((dir + "/product").c_str(), utString()), utProductNullArgument);
    EXPECT_TRUE(p.shortText().isNull());
}

TEST(utProductDescription, ComposedTexts)
{
    struct Case {
        const char* name;
        std::string records;
        const char* extra;
        const char* shortText;
        const char* longText;
    } cases[] = {
        {"type CR left out", "|name|Alpha|\n|release|2011|\n|type|CR|\n", "R1", "Alpha 2011 (64-bit)",
         "Alpha 2011 (R1 64-bit)"},
        {"service pack and type", "|name|Alpha|\n|release|2011|\n|type|Beta|\n|service pack|SP2|\n", "R1",
         "Alpha 2011 (SP2 64-bit)", "Alpha 2011 (SP2 Beta R1 64-bit)"},
        {"lower-case cr is kept", "|name|Alpha|\n|release|2011|\n|type|cr|\n", "R1", "Alpha 2011 (64-bit)",
         "Alpha 2011 (cr R1 64-bit)"},
        {"empty extra text", "|name|Gamma Suite|\n|release|9.1|\n|type|CR|\n", "", "Gamma Suite 9.1 (64-bit)",
         "Gamma Suite 9.1 ( 64-bit)"},
    };
    for (const Case& c : cases) {
        Loaded l;
        loadText(l, "product", "1\n" + c.records, c.extra);
        ASSERT_EQ(l.code, utProductLoaded) << c.name;
        EXPECT_EQ(l.product.shortText().str(), c.shortText) << c.name;
        EXPECT_EQ(l.product.longText().str(), c.longText) << c.name;
    }
}

TEST(utProductDescription, ValuesAndTheFieldsKeptAfterAFailure)
{
    Loaded l;
    loadText(l, "product", "1\n|name|Alpha|\n|vendor|Tarvik|\n|name|again|\n");
    EXPECT_EQ(l.code, utProductMalformed);
    EXPECT_EQ(l.product.value(utString("vendor")).str(), "Tarvik") << "records before the failure stay";
    EXPECT_EQ(l.product.value(utString("name")).str(), "Alpha");
    EXPECT_TRUE(l.product.value(utString("absent")).isNull());
}

TEST(utProductDescription, LinesOfAnyLength)
{
    // lines ("|name|" + value + "|") of exactly one piece (1016: 1023 characters) and one more, each
    // followed by its LF; values that end on, just past and far past the 1023-character pieces
    for (size_t length : {1016u, 1017u, 1020u, 1021u, 1022u, 1023u, 1024u, 2046u, 2047u, 5000u}) {
        std::string longValue(length, 'v');
        Loaded l;
        loadText(l, "product", "1\n|name|" + longValue + "|\n|release|2011|\n|type|CR|\n");
        ASSERT_EQ(l.code, utProductLoaded) << length;
        EXPECT_EQ(l.product.value(utString("name")).length(), static_cast<int>(length));
        EXPECT_EQ(l.product.shortText().length(), static_cast<int>(length + 5 + 9));
    }
    // a line of exactly one piece without its closing delimiter must not borrow from the next line
    Loaded l;
    loadText(l, "product", "1\n|name|" + std::string(1015, 'v') + "\n|release|2011|\n|type|CR|\n");
    EXPECT_EQ(l.code, utProductMalformed);
}

} // namespace
