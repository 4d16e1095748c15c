// The version check without the network: the reply's <data> value, the body gathered in pieces, the
// server setting, and the verdict with its one link.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "app/qwzLinkText.h"
#include "document/qwzStringOutput.h"
#include "http/httpReply.h"
#include "http/qwzProductServer.h"
#include "http/qwzVersionCheck.h"
#include "productServer.h"
#include "testSupport.h"

namespace
{

TEST(VersionReply, CutsTheDataValue)
{
    const struct {
        const char* reply;
        int status;
        const char* value;
    } cases[] = {
        {"x<data>\r\n4.3.4003\r\n</data>y", 0, "4.3.4003"},
        {"<data>abc</data>", 0, "abc"},
        {"<data>\nabc\n</data>", 0, "abc"},
        {"<data></data>", 0, ""},
        {"<data>a\r\n\r\n</data>", 0, "a\r\n"},
        {"<data>first</data><data>second</data>", 0, "first"},
        // the empty value written with one line end runs on to the end of the reply, as it always did
        {"<data>\r\n</data>tail", 0, "</data>tail"},
        {"<data>\n</data>", 0, "</data>"},
        {"value</data>", 8, nullptr},
        {"<data>\r\nno closing tag", 8, nullptr},
        {"</data><data>", 8, nullptr},
        {"", 8, nullptr},
    };
    for (const auto& c : cases) {
        char* value = nullptr;
        EXPECT_EQ(httpCutData(c.reply, value), c.status) << c.reply;
        std::unique_ptr<char[]> owned(value);
        if (c.value) {
            EXPECT_STREQ(value, c.value) << c.reply;
        } else {
            EXPECT_EQ(value, nullptr) << c.reply;
        }
    }
}

TEST(VersionReply, PiecesAreCStringsAndTheBodyStopsAtOneMebibyte)
{
    httpReplyBody body;
    EXPECT_TRUE(body.append("ab\0cd", 5));
    EXPECT_TRUE(body.append("ef", 2));
    EXPECT_EQ(body.length(), 7u);
    std::unique_ptr<char[]> text(body.release());
    EXPECT_EQ(std::string(text.get(), 7), std::string("ab\0\0\0ef", 7)) << "what follows a zero byte is lost";

    std::string mebibyte(httpMaxReply, 'x');
    EXPECT_TRUE(body.append(mebibyte.data(), mebibyte.size()));
    EXPECT_FALSE(body.append("y", 1));
    EXPECT_EQ(body.length(), httpMaxReply);
}

TEST(ProductServerSetting, ParsesTheEnvironmentsForm)
{
    const struct {
        const char* text;
        bool ok;
        const char* host;
        unsigned port;
        bool secure;
    } cases[] = {
        {"http://127.0.0.1:8080", true, "127.0.0.1", 8080, false},
        {"https://localhost:8443/", true, "localhost", 8443, true},
        {"https://staging-1.example.com", true, "staging-1.example.com", 443, true},
        {"http://h", true, "h", 80, false},
        {"http://h:65535", true, "h", 65535, false},
        {"ftp://h:21", false, "", 0, false},
        {"HTTP://h:80", false, "", 0, false},
        {"localhost:80", false, "", 0, false},
        {"http://", false, "", 0, false},
        {"http://:80", false, "", 0, false},
        {"http://h:", false, "", 0, false},
        {"http://h:0", false, "", 0, false},
        {"http://h:65536", false, "", 0, false},
        {"http://h:123456", false, "", 0, false},
        {"http://h:8o", false, "", 0, false},
        {"http://user@h:80", false, "", 0, false},
        {"http://h:80/path", false, "", 0, false},
        {"http://h h:80", false, "", 0, false},
    };
    for (const auto& c : cases) {
        qwzProductServer server{"unchanged", 1, false};
        ASSERT_EQ(qwzProductServer::parse(c.text, server), c.ok) << c.text;
        EXPECT_EQ(server.host, c.ok ? c.host : "unchanged") << c.text;
        if (c.ok) {
            EXPECT_EQ(server.port, c.port) << c.text;
            EXPECT_EQ(server.secure, c.secure) << c.text;
        }
    }
}

TEST(ProductServerSetting, AMalformedSettingIsLoggedAndTheBuiltInServerAsked)
{
    for (const char* value : {"", "nonsense", "http://127.0.0.1:1234"}) {
        qt::setEnv("QWZ_PRODUCT_SERVER", value);
        qwzStringOutput log;
        qwzProductServer server = qwzProductServer::current(log);
        bool overridden = std::string(value) == "http://127.0.0.1:1234";
        EXPECT_EQ(server.host, overridden ? "127.0.0.1" : QWZ_PRODUCT_HOST) << value;
        EXPECT_EQ(server.secure, !overridden) << value;
        std::string line = log.text().str();
        if (std::string(value) == "nonsense") {
            EXPECT_EQ(line, "QWZ_PRODUCT_SERVER ignored: \"nonsense\" is not http://HOST:PORT or https://HOST:PORT\n");
        } else {
            EXPECT_EQ(line, "") << value;
        }
    }
    qt::setEnv("QWZ_PRODUCT_SERVER", nullptr);
}

TEST(VersionVerdict, ComparesKeysAsTextAndLinksOnlyWhatTheProgramWrites)
{
    const std::string older = "You have version Quillon 4.3.4002\n\nThis is OLDER than the latest downloadable version";
    const std::string newer = "You have version Quillon 4.3.4002\n\nThis is NEWER than the latest downloadable version";
    const struct {
        const char* key;
        const char* display;
        int upToDate;
        std::string start;
        std::string url;
        const char* shown; // the display text as it appears
    } cases[] = {
        {"434002", "4.3.4002", 1, "You have version Quillon 4.3.4002\n\nThis is the latest downloadable version.", "",
         nullptr},
        {"434003", "4.3.4003", 0, older, QWZ_DOWNLOAD_PAGE, "(4.3.4003)"},
        {"5", "5", 0, older, QWZ_DOWNLOAD_PAGE, "(5)"},
        {"434001", "4.3.4001", 0, newer, "mailto:" QWZ_SUPPORT_EMAIL, "(4.3.4001)"},
        {"4340", "4.3.40", 0, newer, "mailto:" QWZ_SUPPORT_EMAIL, "(4.3.40)"},
        {"4.3.4003", "4.3.4003", 0, newer, "mailto:" QWZ_SUPPORT_EMAIL, "(4.3.4003)"},
        {"434003", "<a href=\"file:///C:/x\">4.3.4003</a>", 0, older, QWZ_DOWNLOAD_PAGE,
         "(\xE2\x80\xB9" "a href=\"file:///C:/x\"\xE2\x80\xBA" "4.3.4003\xE2\x80\xB9/a\xE2\x80\xBA)"},
    };
    for (const auto& c : cases) {
        VersionCheckResult result = qwzVersionVerdict({0, c.key, 0, c.display}, "host.example");
        std::string message = result.message.str();
        EXPECT_EQ(result.upToDate, c.upToDate) << c.key;
        EXPECT_EQ(message.substr(0, c.start.size()), c.start) << c.key;
        if (c.shown) {
            EXPECT_NE(message.find(c.shown), std::string::npos) << message;
        }
        qwzLinkText shown(message);
        EXPECT_EQ(shown.url(), c.url) << message;
        EXPECT_EQ(shown.linkRanges().size(), c.url.empty() ? 0u : 1u) << message;
    }
}

TEST(VersionVerdict, AnyFailedRequestNamesTheHost)
{
    for (auto answers : {qwzVersionAnswers{13, nullptr, 0, "4.3.4003"}, qwzVersionAnswers{0, "434003", 8, nullptr}}) {
        VersionCheckResult result = qwzVersionVerdict(answers, "host.example");
        EXPECT_EQ(result.upToDate, 0);
        EXPECT_EQ(result.message.str(),
                  "Unable to contact host.example\n\nYour Internet connection may need configuring.");
    }
}

} // namespace
