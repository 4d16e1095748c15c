// The version check against the local product-attribute server (tests/server/productServer.py runs this
// program with --wrap): the client's status for each way a reply can go (a body in two writes is whole:
// a synchronous read waits for all it asked for), and a check's requests as they leave and its status text.
#include "quillonTestApp.h"

#include "http/httpReply.h"
#include "http/httpThing.h"
#include "http/qwzCCheckVersionDlg.h"
#include "productServer.h"
#include "testSupport.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace
{

std::string fromEnvironment(const char* name)
{
    const char* value = std::getenv(name);
    return qt::hostPath(value ? value : "");
}

class VersionServer : public testing::Test
{
protected:
    void SetUp() override
    {
        if (fromEnvironment("QWZ_TEST_PRODUCT_TABLE").empty())
            GTEST_SKIP() << "needs the product server: run as the CTest entry win_tests_version";
        std::string url = fromEnvironment("QWZ_PRODUCT_SERVER");
        port_ = std::atoi(url.substr(url.rfind(':') + 1).c_str());
        LoadLibraryW(L"Msftedit.dll");
    }
    void serve(const std::string& table)
    {
        qt::writeFile(fromEnvironment("QWZ_TEST_PRODUCT_TABLE"), table);
    }
    // The server's log: one JSON line per request.
    std::string log()
    {
        return qt::readFile(fromEnvironment("QWZ_TEST_PRODUCT_LOG"));
    }
    int port_ = 0;
};

TEST_F(VersionServer, EachWayAReplyGoesHasItsStatus)
{
    serve("Quillon version 434002\nP304 version !304\nP404 version !404\nNoData version !nodata 1\n"
          "NoClose version !noclose 1\nNoLength version !nolength 5\nSplit version !split 5\nSlow version !slow 5\n"
          "Cut version !cut 5\nEndless version !endless\nHuge version !huge 5\n");
    const struct {
        const char* product;
        int status;
        const char* value;
    } cases[] = {
        {"Quillon", httpOk, "434002"},
        {"P304", httpNotModified, nullptr},
        {"P404", httpBadReply, nullptr},
        {"Unknown", httpBadReply, nullptr},
        {"NoData", httpNoData, nullptr},
        {"NoClose", httpNoData, nullptr},
        {"NoLength", httpOk, "5"},
        {"Split", httpOk, "5"},
        {"Slow", httpOk, "5"},
        {"Cut", httpBadReply, nullptr},
        {"Endless", httpBadReply, nullptr},
        {"Huge", httpBadReply, nullptr},
    };
    for (const auto& c : cases) {
        char* value = nullptr;
        EXPECT_EQ(httpVersion("127.0.0.1", port_, 0).get(c.product, value), c.status) << c.product;
        std::unique_ptr<char[]> owned(value);
        EXPECT_STREQ(value, c.value) << c.product;
    }
    char* value = nullptr;
    EXPECT_EQ(httpProductAttribute("127.0.0.1", port_, 0).get("a b&c", "x y", value), httpBadReply)
        << "split by the script";
    std::string sent = log().substr(log().rfind("{\"method\""));
    EXPECT_NE(sent.find("\"body\": \"product=a b&c&attribute=x y\""), std::string::npos) << "unencoded: " << sent;
}

// Records every status text it is given, with the cursor of that moment.
class RecordingFrame : public qwzCMainFrame
{
public:
    static inline std::vector<std::pair<std::wstring, HCURSOR>> seen;
    void setMessageText(const std::wstring& text) override
    {
        seen.emplace_back(text, GetCursor());
        qwzCMainFrame::setMessageText(text);
    }
};

TEST_F(VersionServer, ACheckAsksTwiceUnderItsStatusTextEvenWhenTheFirstFails)
{
    wt::TestApp app(L"quillonTests-version");
    app.addDocTemplate(
        winDocTemplate::make<qwzCQuillonDoc, qwzCQuillonView, RecordingFrame>(qwzCMainFrame::resourceId));
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    app.mainFrame()->setMessageText(L"Before the check");
    HCURSOR before = SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)));
    HCURSOR arrow = GetCursor();
    RecordingFrame::seen.clear();
    serve("Quillon version !404\nQuillon version_string 4.3.4003\n");
    size_t logged = log().size();

    VersionCheckResult result;
    EXPECT_EQ(runVersionCheck(result, app.mainFrame()), 1);
    EXPECT_EQ(result.message.str().substr(0, result.message.str().find('\n')), "Unable to contact 127.0.0.1");
    ASSERT_EQ(RecordingFrame::seen.size(), 2u);
    EXPECT_EQ(RecordingFrame::seen[0].first, L"Checking for newer versions...");
    EXPECT_EQ(RecordingFrame::seen[1].first, L"Before the check");
    EXPECT_EQ(RecordingFrame::seen[1].second, arrow) << "the wait cursor goes before the text comes back";
    SetCursor(before);

    std::string sent = log().substr(logged);
    for (const char* attribute : {"version", "version_string"}) {
        std::string line = sent.substr(0, sent.find('\n'));
        sent.erase(0, line.size() + 1);
        EXPECT_NE(line.find("\"path\": \"/cgi-bin/product_attributes/product_attribute.pl\""), std::string::npos);
        EXPECT_NE(line.find("[\"User-Agent\", \"Tarvik Product\"]"), std::string::npos) << line;
        EXPECT_EQ(line.find("Content-Type"), std::string::npos) << line;
        EXPECT_NE(line.find("\"body\": \"product=Quillon&attribute=" + std::string(attribute) + "\""),
                  std::string::npos)
            << line;
    }
    EXPECT_EQ(sent, "") << "two requests, no more";
}

} // namespace
