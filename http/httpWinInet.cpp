// The product-attribute client's transport. Kept as the service has always been spoken to: agent
// "Tarvik Product" with the system's proxy settings, POST without headers of our own and an unencoded
// form, and a body of known length taken in a single read (a body the system hands over in pieces is an
// error). New: no body past httpMaxReply is accepted, whatever the server announces or sends; and a
// request with a deadline ends by it, through the time-outs of its own request handle (Wine honours them
// there, not on the session, and closing a handle from another thread does not end a blocked call).
#include "http/httpThing.h"

#include <cstring>
#include <initializer_list>
#include <string>

#include "http/httpReply.h"
#include "productServer.h"

namespace
{

const char* const attributeScript = "/cgi-bin/product_attributes/product_attribute.pl";
constexpr DWORD pieceSize = 1024;

// The one form both clients send; the names go out unencoded, as the service has always taken them.
int askAttribute(httpNormal& client, const char* product, const char* attribute, char*& value)
{
    std::string body = std::string("product=") + product + "&attribute=" + attribute;
    char* reply = nullptr;
    int status = client.post(attributeScript, body.c_str(), reply, nullptr);
    if (status != httpOk)
        return status;
    status = httpCutData(reply, value);
    delete[] reply;
    return status;
}

bool setTimeout(HINTERNET request, DWORD option, DWORD milliseconds)
{
    return InternetSetOptionA(request, option, &milliseconds, sizeof milliseconds) != FALSE;
}

} // namespace

httpThing::httpThing(const char* host, int port, int secure) : port_(port)
{
    session_.reset(InternetOpenA("Tarvik Product", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    if (!session_)
        return;
    const char* name = host ? host : QWZ_PRODUCT_HOST;
    std::size_t length = std::strlen(name);
    host_.reset(new char[length + 1]);
    std::memcpy(host_.get(), name, length + 1);
    if (port_ == 0)
        port_ = secure ? INTERNET_DEFAULT_HTTPS_PORT : INTERNET_DEFAULT_HTTP_PORT;
    if (secure)
        requestFlags_ |= INTERNET_FLAG_SECURE;
    connection_.reset(InternetConnectA(session_.get(), host_.get(), static_cast<INTERNET_PORT>(port_), nullptr, nullptr,
                                       INTERNET_SERVICE_HTTP, 0, 0));
    connected_ = connection_ != nullptr;
}

httpThing::~httpThing() = default;
httpNormal::~httpNormal() = default;
httpProductAttribute::~httpProductAttribute() = default;
httpVersion::~httpVersion() = default;

int httpNormal::post(const char* path, const char* body, char*& reply, const char* headers)
{
    if (!path || !connected_)
        return httpBadCall;
    reply = nullptr;
    httpHandle request(HttpOpenRequestA(connection_.get(), "POST", path, nullptr, nullptr, nullptr, requestFlags_, 0));
    if (!request)
        return httpOpenFailed;
    if (deadline_.isSet()) {
        // connecting, sending and waiting each take their turn inside the one call below: thirds keep
        // their sum inside the deadline
        DWORD third = deadline_.remainingMs() / 3;
        if (third == 0)
            return httpSendFailed;
        for (DWORD option :
             {INTERNET_OPTION_CONNECT_TIMEOUT, INTERNET_OPTION_SEND_TIMEOUT, INTERNET_OPTION_RECEIVE_TIMEOUT})
            if (!setTimeout(request.get(), option, third))
                return httpSendFailed;
    }
    DWORD headerLength = headers ? static_cast<DWORD>(std::strlen(headers)) : 0xFFFFFFFF;
    DWORD bodyLength = body ? static_cast<DWORD>(std::strlen(body)) : 0;
    if (!HttpSendRequestA(request.get(), headers, headerLength, const_cast<char*>(body), bodyLength))
        return httpSendFailed;
    return readReply(request.get(), reply);
}

int httpNormal::readReply(HINTERNET request, char*& reply)
{
    if (!request)
        return httpNoRequest;
    if (!connected_)
        return httpBadCall;
    reply = nullptr;
    DWORD status = 0, size = sizeof status;
    if (!HttpQueryInfoA(request, HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status, &size, nullptr))
        return httpBadCall;
    if (status == 304)
        return httpNotModified;
    if (status != 200)
        return httpBadReply;

    DWORD length = 0;
    size = sizeof length;
    if (HttpQueryInfoA(request, HTTP_QUERY_CONTENT_LENGTH | HTTP_QUERY_FLAG_NUMBER, &length, &size, nullptr)) {
        if (length > httpMaxReply)
            return httpBadReply;
        std::unique_ptr<char[]> body(new char[length + 1]);
        DWORD read = 0;
        if (!readTimeLeft(request) || !InternetReadFile(request, body.get(), length + 1, &read) || read != length)
            return httpBadReply;
        body[length] = '\0';
        reply = body.release();
        return httpOk;
    }
    if (GetLastError() != ERROR_HTTP_HEADER_NOT_FOUND)
        return httpBadCall;

    httpReplyBody body;
    char piece[pieceSize];
    for (;;) {
        DWORD read = 0;
        if (!readTimeLeft(request))
            return httpBadReply;
        BOOL ok = InternetReadFile(request, piece, pieceSize, &read);
        if (!ok && read > 0)
            return httpBadReply;
        if (!ok || read == 0)
            break;
        if (!body.append(piece, read))
            return httpBadReply;
    }
    reply = body.release();
    return httpOk;
}

bool httpNormal::readTimeLeft(HINTERNET request)
{
    if (!deadline_.isSet())
        return true;
    DWORD left = deadline_.remainingMs();
    return left > 0 && setTimeout(request, INTERNET_OPTION_RECEIVE_TIMEOUT, left);
}

int httpProductAttribute::get(const char* product, const char* attribute, char*& value)
{
    if (!product || !attribute || !connected_)
        return httpBadCall;
    value = nullptr;
    return askAttribute(*this, product, attribute, value);
}

int httpVersion::get(const char* product, char*& value)
{
    if (!product || !connected_)
        return httpBadCall;
    value = nullptr;
    return askAttribute(*this, product, "version", value);
}
