// Reply handling without the transport. The body grows geometrically, so gathering it stays linear in its
// size however small the pieces are.
#include "http/httpReply.h"

#include <cstring>

bool httpReplyBody::append(const char* piece, std::size_t length)
{
    if (length > httpMaxReply - bytes_.size())
        return false;
    std::size_t at = bytes_.size();
    bytes_.resize(at + length);
    if (length)
        std::strncpy(bytes_.data() + at, piece, length);
    return true;
}

char* httpReplyBody::release()
{
    char* body = new char[bytes_.size() + 1];
    if (!bytes_.empty())
        std::memcpy(body, bytes_.data(), bytes_.size());
    body[bytes_.size()] = '\0';
    bytes_.clear();
    return body;
}

int httpCutData(const char* reply, char*& value)
{
    value = nullptr;
    if (!reply)
        return httpBadCall;
    const char* open = std::strstr(reply, "<data>");
    if (!open)
        return httpNoData;
    const char* start = open + 6;
    if (*start == '\r')
        ++start;
    if (*start == '\n')
        ++start;
    const char* close = std::strstr(start, "</data>");
    if (!close)
        return httpNoData;
    // the bytes looked at lie after the opening tag, so never before the reply
    const char* cut = close;
    if (cut[-1] == '\n')
        --cut;
    if (cut[-1] == '\r')
        --cut;
    std::size_t length = cut >= start ? static_cast<std::size_t>(cut - start) : std::strlen(start);
    value = new char[length + 1];
    std::memcpy(value, start, length);
    value[length] = '\0';
    return httpOk;
}
