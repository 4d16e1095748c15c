// The version check without the network: the reply's <data> value, the body gathered in pieces, the
// server setting, and the verdict (a failure, or the keys compared as text) with its one link.
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
        {"x<data>\r\n4.3.4003\r\n</data>y", httpOk, "4.3.4003"},
        {"<data>abc</data>", httpOk, "abc"},
        {"<data>\nabc\n</data>", httpOk, "abc"},
        {"<data></data>", httpOk, ""},
        {"<data>a\r\n\r\n</data>", httpOk, "a\r\n"},
        {"<data>first</data><data>second</data>", httpOk, "first"},
        // the empty value written with one line end runs on to the end of the reply, as it always did
        {"<data>\r\n</data>tail", httpOk, "</data>tail"},
        {"<data>\n</data>", httpOk, "</data>"},
        // (no opening or no closing tag at all: the client's test against the local server)
        {"</data><data>", httpNoData, nullptr},
        {"", httpNoData, nullptr},
    };
    for (const auto& c : cases) {
        char* value = nullptr;
        EXPECT_EQ(httpCutData(c.reply, value), c.status) << c.reply;
        std::unique_ptr<char[]> owned(value);
        EXPECT_STREQ(value, c.value) << c.reply;
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

TEST(ProductServerSetting, TakesOnlyAWellFormedServerAndLogsAnyOther)
{
    const struct {
        const char* value;
        const char* host;
        unsigned port;
        bool secure;
    } cases[] = {
        {"http://127.0.0.1:8080", "127.0.0.1", 8080, false},
        {"https://localhost:8443/", "localhost", 8443, true},
        {"http://staging-1.example.com", "staging-1.example.com", 80, false},
        {"", QWZ_PRODUCT_HOST, 443, true},
        {"ftp://h:21", nullptr, 0, false},
        {"HTTP://h:80", nullptr, 0, false},
        {"h:80", nullptr, 0, false},
        {"http://:80", nullptr, 0, false},
        {"http://h:", nullptr, 0, false},
        {"http://h:0", nullptr, 0, false},
        {"http://h:65536", nullptr, 0, false},
        {"http://h:8o", nullptr, 0, false},
        {"http://u@h:80", nullptr, 0, false},
        {"http://h:80/path", nullptr, 0, false},
        {"http://h h", nullptr, 0, false},
    };
    qt::ScopedEnv env;
    for (const auto& c : cases) {
        env.set("QWZ_PRODUCT_SERVER", c.value);
        qwzStringOutput log;
        qwzProductServer server = qwzProductServer::current(log);
        bool ignored = !c.host;
        EXPECT_EQ(server.host, ignored ? QWZ_PRODUCT_HOST : c.host) << c.value;
        EXPECT_EQ(server.port, ignored ? 443 : c.port) << c.value;
        EXPECT_EQ(server.secure, ignored || c.secure) << c.value;
        EXPECT_EQ(log.text().str(), ignored ? "QWZ_PRODUCT_SERVER ignored: \"" + std::string(c.value) +
                                                  "\" is not http://HOST:PORT or https://HOST:PORT\n"
                                            : "")
            << c.value;
    }
}

TEST(VersionVerdict, ComparesKeysAsTextAndLinksOnlyWhatTheProgramWrites)
{
    const std::string mail = "mailto:" QWZ_SUPPORT_EMAIL, page = QWZ_DOWNLOAD_PAGE;
    const struct {
        const char* key;
        const char* display;
        const char* shown; // the display text as the message carries it
        std::string url;   // also tells the verdict: none latest, the page OLDER, the mail NEWER
    } cases[] = {
        {"434002", "4.3.4002", "", ""},
        {"434003", "4.3.4003", "4.3.4003", page},
        {"5", "5", "5", page},
        {"434001", "4.3.4001", "4.3.4001", mail},
        {"4340", "4.3.40", "4.3.40", mail},
        {"4.3.4003", "4.3.4003", "4.3.4003", mail},
        {"434003", "<a href=\"file:///C:/x\">x</a>",
         "\xE2\x80\xB9"
         "a href=\"file:///C:/x\"\xE2\x80\xBA"
         "x\xE2\x80\xB9/a\xE2\x80\xBA",
         page},
    };
    for (const auto& c : cases) {
        VersionCheckResult result = qwzVersionVerdict({0, c.key, 0, c.display}, "host.example");
        std::string message = result.message.str();
        std::string expected = "You have version Quillon 4.3.4002\n\nThis is " +
                               (c.url.empty() ? std::string("the latest downloadable version.")
                                              : std::string(c.url == page ? "OLDER" : "NEWER") +
                                                    " than the latest downloadable version (" + c.shown + ")");
        EXPECT_EQ(message.substr(0, expected.size()), expected) << c.key;
        EXPECT_EQ(result.upToDate, c.url.empty() ? 1 : 0) << c.key;
        qwzLinkText shown(message);
        EXPECT_EQ(shown.url(), c.url) << message;
        EXPECT_EQ(shown.linkRanges().size(), c.url.empty() ? 0u : 1u) << message;
    }
    for (auto failed : {qwzVersionAnswers{13, nullptr, 0, "4.3.4003"}, qwzVersionAnswers{0, "434003", 8, nullptr}}) {
        VersionCheckResult result = qwzVersionVerdict(failed, "host.example");
        EXPECT_EQ(result.upToDate, 0);
        EXPECT_EQ(result.message.str(),
                  "Unable to contact host.example\n\nYour Internet connection may need configuring.");
    }
}

} // namespace
