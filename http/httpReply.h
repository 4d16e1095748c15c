// The product-attribute service's reply as the client takes it apart: the body gathered piece by piece,
// and the value cut out of its <data> element. The reply is untrusted: a body never grows past
// httpMaxReply, and every scan stays inside the NUL-terminated text.
#pragma once

#include <cstddef>
#include <vector>

// The largest body the client accepts; the service's answers are a few dozen bytes.
constexpr std::size_t httpMaxReply = std::size_t(1) << 20;

// A body that arrives in pieces of unknown number. Each piece is copied as a bounded C string, so what
// follows a zero byte inside a piece does not survive; callers read the body as one C string anyway.
class httpReplyBody
{
public:
    // Adds a piece; false (and the body stays as it was) when the body would pass httpMaxReply.
    bool append(const char* piece, std::size_t length);

    std::size_t length() const
    {
        return bytes_.size();
    }

    // The body as a new[] array of length() + 1 bytes, NUL-terminated, for the caller to delete[].
    char* release();

private:
    std::vector<char> bytes_;
};

// Status codes of the product-attribute client.
enum httpStatus : int {
    httpOk = 0,
    httpSendFailed = 4,
    httpNoData = 8,
    httpBadCall = 9,
    httpOpenFailed = 12,
    httpBadReply = 13,
    httpNoRequest = 14,
    httpNotModified = 15,
};

// Cuts the value of the reply's first <data> element: one CR and then one LF after the opening tag are
// skipped, one LF and then one CR before the closing tag are dropped. Returns httpOk with `value` a new[]
// C string for the caller, or httpNoData (value null) when either tag is missing.
//
// An empty value written as <data>CR LF</data> is not returned empty: the cut then falls before the value's
// start, and the value runs from the closing tag to the end of the reply. Servers rely on nothing else,
// so this is kept as it always was.
int httpCutData(const char* reply, char*& value);
