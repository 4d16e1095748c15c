// Which product-attribute server the version check asks: the maker's built-in host over HTTPS on port
// 443, or, for testing and staging, the one that QWZ_PRODUCT_SERVER names as http://HOST:PORT or
// https://HOST:PORT (the scheme decides whether the connection is secure).
#pragma once

#include <string>
#include <string_view>

class qwzOutput;

struct qwzProductServer {
    std::string host;
    unsigned port = 443;
    bool secure = true;

    // The built-in server.
    static qwzProductServer builtIn();

    // Parses http://HOST[:PORT] or https://HOST[:PORT] with an optional trailing "/": HOST is a name or a
    // dotted address (letters, digits, "-" and "."), PORT 1-65535 (80 or 443 when left out). False for
    // anything else, `out` unchanged.
    static bool parse(std::string_view text, qwzProductServer& out);

    // The server in effect: QWZ_PRODUCT_SERVER when it is set, not empty and well formed, otherwise the
    // built-in one. A malformed value is named in one line on `log`.
    static qwzProductServer current(qwzOutput& log);
};
