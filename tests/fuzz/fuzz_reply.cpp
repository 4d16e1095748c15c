// The version check's outside input: a server reply (cut, and gathered in pieces), the server setting of
// the environment, and the verdict on any key and display text, whose only link must be the program's.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "app/qwzLinkText.h"
#include "http/httpReply.h"
#include "http/qwzProductServer.h"
#include "http/qwzVersionCheck.h"
#include "productServer.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string input(reinterpret_cast<const char*>(data), size);

    httpReplyBody body;
    for (size_t at = 0, step = 1; at < size; at += step, step = step % 7 + 1)
        if (!body.append(input.data() + at, std::min(step, size - at)))
            std::abort();
    std::unique_ptr<char[]> reply(body.release());
    if (std::strlen(reply.get()) > size)
        std::abort();

    char* value = nullptr;
    int status = httpCutData(reply.get(), value);
    std::unique_ptr<char[]> owned(value);
    if ((status == 0) != (value != nullptr) || (value && std::strlen(value) > size))
        std::abort();

    qwzProductServer server;
    if (qwzProductServer::parse(input, server) && (server.host.empty() || server.port == 0 || server.port > 65535))
        std::abort();

    // the first line is the key, the rest the display text
    std::string key = std::string(reply.get()).substr(0, std::string(reply.get()).find('\n'));
    const char* display = reply.get() + std::min(key.size() + 1, std::strlen(reply.get()));
    VersionCheckResult result = qwzVersionVerdict({0, key.c_str(), 0, display}, "host");
    qwzLinkText shown(result.message.str());
    if (shown.linkRanges().size() > 1)
        std::abort();
    if (!shown.url().empty() && shown.url() != QWZ_DOWNLOAD_PAGE && shown.url() != "mailto:" QWZ_SUPPORT_EMAIL)
        std::abort();
    return 0;
}
