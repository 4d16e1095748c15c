// The version check against the local product-attribute server (tests/server/productServer.py runs this
// program with --wrap): the client's status for each way a reply can go wrong (a body that arrives in two
// writes is still whole: a synchronous read waits for all it asked for), the request as it leaves,
// both requests always made, each verdict in the dialog with its link, and the status text restored.
#include "quillonTestApp.h"

#include "http/httpThing.h"
#include "http/qwzCCheckVersionDlg.h"
#include "productServer.h"
#include "res/resource.h"
#include "testSupport.h"

#include <gtest/gtest.h>

#include <winsock2.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace
{

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

class VersionServer : public testing::Test
{
protected:
    void SetUp() override
    {
        if (environment("QWZ_TEST_PRODUCT_TABLE").empty())
            GTEST_SKIP() << "needs the product server: run as the CTest entry win_tests_version";
        url_ = environment("QWZ_PRODUCT_SERVER");
        port_ = std::atoi(url_.substr(url_.rfind(':') + 1).c_str());
        LoadLibraryW(L"Msftedit.dll");
    }
    void TearDown() override
    {
        qt::setEnv("QWZ_PRODUCT_SERVER", url_.c_str());
    }

    void serve(const std::string& table)
    {
        qt::writeFile(qt::hostPath(environment("QWZ_TEST_PRODUCT_TABLE")), table);
    }
    // The server's log, one request to a line.
    std::vector<std::string> requests()
    {
        std::vector<std::string> lines;
        std::string log = qt::fileExists(qt::hostPath(environment("QWZ_TEST_PRODUCT_LOG")))
                              ? qt::readFile(qt::hostPath(environment("QWZ_TEST_PRODUCT_LOG")))
                              : std::string();
        for (size_t at = 0, end; (end = log.find('\n', at)) != std::string::npos; at = end + 1)
            lines.push_back(log.substr(at, end - at));
        return lines;
    }

    std::string url_;
    int port_ = 0;
};

// A port on which nothing listens: bound once to be given a free one, then released.
int closedPort()
{
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    SOCKET s = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(s, reinterpret_cast<sockaddr*>(&address), sizeof address);
    int length = sizeof address;
    getsockname(s, reinterpret_cast<sockaddr*>(&address), &length);
    closesocket(s);
    return ntohs(address.sin_port);
}

TEST_F(VersionServer, EachWayAReplyGoesWrongHasItsStatus)
{
    serve("Quillon version 434002\n"
          "P304 version !304\nP404 version !404\nNoData version !nodata 1\nNoClose version !noclose 1\n"
          "NoLength version !nolength 434003\nSplit version !split 434003\nSlow version !slow 434003\n"
          "Cut version !cut 434003\nEndless version !endless\nHuge version !huge 434003\n");
    const struct {
        const char* product;
        int status;
        const char* value;
    } cases[] = {
        {"Quillon", 0, "434002"},  {"P304", 15, nullptr},    {"P404", 13, nullptr},     {"Unknown", 13, nullptr},
        {"NoData", 8, nullptr},    {"NoClose", 8, nullptr},  {"NoLength", 0, "434003"}, {"Split", 0, "434003"},
        {"Slow", 0, "434003"},     {"Cut", 13, nullptr},     {"Endless", 13, nullptr},  {"Huge", 13, nullptr},
    };
    for (const auto& c : cases) {
        httpVersion client("127.0.0.1", port_, 0);
        char* value = nullptr;
        EXPECT_EQ(client.get(c.product, value), c.status) << c.product;
        std::unique_ptr<char[]> owned(value);
        EXPECT_STREQ(value, c.value) << c.product;
    }
    httpVersion nobody("127.0.0.1", closedPort(), 0);
    char* value = nullptr;
    EXPECT_EQ(nobody.get("Quillon", value), 4) << "nothing listens";
    EXPECT_EQ(nobody.get(nullptr, value), 9);
}

TEST_F(VersionServer, TheRequestLeavesAsItAlwaysHas)
{
    serve("a b&c x y value\n");
    size_t before = requests().size();
    httpProductAttribute client("127.0.0.1", port_, 0);
    char* value = nullptr;
    EXPECT_EQ(client.get("a b&c", "x y", value), 13) << "the unencoded form reaches the script split";
    std::vector<std::string> seen = requests();
    ASSERT_EQ(seen.size(), before + 1);
    const std::string& request = seen.back();
    EXPECT_NE(request.find("\"method\": \"POST\", \"path\": \"/cgi-bin/product_attributes/product_attribute.pl\""),
              std::string::npos)
        << request;
    EXPECT_NE(request.find("[\"User-Agent\", \"Tarvik Product\"]"), std::string::npos) << request;
    EXPECT_EQ(request.find("Content-Type"), std::string::npos) << request;
    EXPECT_NE(request.find("\"body\": \"product=a b&c&attribute=x y\""), std::string::npos) << request;
}

struct Shown {
    std::string text, url;
};

// Runs the Help menu's dialog (which makes the check) and reads what it shows.
Shown checkInDialog()
{
    Shown shown;
    std::unique_ptr<qwzCCheckVersionDlg> dialog;
    qw::whileModal(
        [&] {
            dialog = std::make_unique<qwzCCheckVersionDlg>(nullptr);
            dialog->doModal();
        },
        [&](HWND window) {
            shown.text = wt::narrow(qw::textOf(GetDlgItem(window, IDC_VERSION_MESSAGE)));
            SendMessageW(window, WM_COMMAND, IDOK, 0);
        });
    shown.url = dialog->link().url().str();
    return shown;
}

TEST_F(VersionServer, TheDialogShowsEachVerdictWithItsLink)
{
    const struct {
        const char* key;
        const char* display;
        const char* says;
        const char* url;
    } cases[] = {
        {"434002", "4.3.4002", "This is the latest downloadable version.", ""},
        {"434003", "4.3.4003", "This is OLDER than the latest downloadable version (4.3.4003)", QWZ_DOWNLOAD_PAGE},
        {"4.3.4003", "4.3.4003", "This is NEWER than the latest downloadable version (4.3.4003)",
         "mailto:" QWZ_SUPPORT_EMAIL},
        {"434003", "<b>4.3.4003</b> <a href=\"file:///C:/x\">x</a>",
         "version (\xE2\x80\xB9" "b\xE2\x80\xBA" "4.3.4003\xE2\x80\xB9/b\xE2\x80\xBA \xE2\x80\xB9" "a "
         "href=\"file:///C:/x\"\xE2\x80\xBAx\xE2\x80\xB9/a\xE2\x80\xBA)",
         QWZ_DOWNLOAD_PAGE},
    };
    for (const auto& c : cases) {
        serve(std::string("Quillon version ") + c.key + "\nQuillon version_string " + c.display + "\n");
        Shown shown = checkInDialog();
        EXPECT_NE(shown.text.find("You have version Quillon 4.3.4002"), std::string::npos) << shown.text;
        EXPECT_NE(shown.text.find(c.says), std::string::npos) << shown.text;
        EXPECT_EQ(shown.url, c.url) << c.key;
    }
}

TEST_F(VersionServer, BothRequestsAreMadeAndAnyFailureSaysUnableToContact)
{
    serve("Quillon version !404\nQuillon version_string 4.3.4003\n");
    size_t before = requests().size();
    Shown failed = checkInDialog();
    EXPECT_EQ(failed.text.substr(0, failed.text.find('\r')), "Unable to contact 127.0.0.1");
    std::vector<std::string> seen = requests();
    ASSERT_EQ(seen.size(), before + 2);
    EXPECT_NE(seen[before].find("attribute=version\""), std::string::npos) << seen[before];
    EXPECT_NE(seen[before + 1].find("attribute=version_string\""), std::string::npos) << seen[before + 1];

    serve("Quillon version 434003\nQuillon version_string 4.3.4003\n");
    qt::setEnv("QWZ_PRODUCT_SERVER", ("http://127.0.0.1:" + std::to_string(closedPort())).c_str());
    Shown unreachable = checkInDialog();
    EXPECT_EQ(unreachable.text.substr(0, unreachable.text.find('\r')), "Unable to contact 127.0.0.1");
    EXPECT_EQ(unreachable.url, "");
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

TEST_F(VersionServer, TheStatusTextTellsOfTheCheckAndComesBackAfterTheCursor)
{
    wt::TestApp app(L"quillonTests-version");
    app.addDocTemplate(winDocTemplate::make<qwzCQuillonDoc, qwzCQuillonView, RecordingFrame>(qwzCMainFrame::resourceId));
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    app.mainFrame()->setMessageText(L"Before the check");
    HCURSOR before = SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)));
    HCURSOR arrow = GetCursor();
    RecordingFrame::seen.clear();

    serve("Quillon version 434003\nQuillon version_string 4.3.4003\n");
    VersionCheckResult result;
    EXPECT_EQ(runVersionCheck(result), 1);
    ASSERT_EQ(RecordingFrame::seen.size(), 2u);
    EXPECT_EQ(RecordingFrame::seen[0].first, L"Checking for newer versions...");
    EXPECT_EQ(RecordingFrame::seen[1].first, L"Before the check");
    EXPECT_EQ(RecordingFrame::seen[1].second, arrow) << "the wait cursor goes before the text comes back";
    EXPECT_EQ(app.mainFrame()->messageText(), L"Before the check");
    SetCursor(before);
}

} // namespace
