// The product-attribute server's address. The environment value is untrusted: it is checked whole before
// any of it is used, and never reaches a format.
#include "http/qwzProductServer.h"

#include <cstdlib>

#include "document/qwzOutput.h"
#include "productServer.h"
#include "resourceIds.h"

namespace
{

bool hostCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

bool startsWith(std::string_view text, std::string_view prefix)
{
    return text.substr(0, prefix.size()) == prefix;
}

} // namespace

qwzProductServer qwzProductServer::builtIn()
{
    return {QWZ_PRODUCT_HOST, 443, true};
}

bool qwzProductServer::parse(std::string_view text, qwzProductServer& out)
{
    qwzProductServer parsed;
    if (startsWith(text, "https://")) {
        text.remove_prefix(8);
    } else if (startsWith(text, "http://")) {
        text.remove_prefix(7);
        parsed.secure = false;
        parsed.port = 80;
    } else {
        return false;
    }
    if (!text.empty() && text.back() == '/')
        text.remove_suffix(1);
    std::string_view host = text.substr(0, text.find(':'));
    if (host.empty())
        return false;
    for (char c : host)
        if (!hostCharacter(c))
            return false;
    if (host.size() < text.size()) {
        std::string_view digits = text.substr(host.size() + 1);
        if (digits.empty() || digits.size() > 5)
            return false;
        unsigned port = 0;
        for (char c : digits) {
            if (c < '0' || c > '9')
                return false;
            port = port * 10 + static_cast<unsigned>(c - '0');
        }
        if (port == 0 || port > 65535)
            return false;
        parsed.port = port;
    }
    parsed.host.assign(host);
    out = parsed;
    return true;
}

qwzProductServer qwzProductServer::current(qwzOutput& log)
{
    qwzProductServer server = builtIn();
    const char* value = std::getenv("QWZ_PRODUCT_SERVER");
    if (value && *value && !parse(value, server))
        log.printMessage(0, IDS_PRODUCT_SERVER_IGNORED, value);
    return server;
}
