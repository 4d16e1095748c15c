// The product-attribute client over WinINet, a family of four: httpThing holds the session and the
// connection, httpNormal POSTs one request and reads its reply, httpProductAttribute and httpVersion ask
// for one attribute of a product. Synchronous: a request blocks the calling thread. Every operation
// returns a status of httpReply.h (0 on success); text passes to and from the server unchanged.
#pragma once

#include <windows.h>

#include <wininet.h>

#include <cstdint>
#include <memory>

#include "http/httpDeadline.h"

// Closes a WinINet handle.
struct httpHandleCloser {
    void operator()(void* handle) const
    {
        InternetCloseHandle(handle);
    }
};
using httpHandle = std::unique_ptr<void, httpHandleCloser>;

class httpThing
{
public:
    // `host` null means the maker's built-in server; `port` 0 means 443 when `secure`, else 80. A secure
    // object asks for TLS on every request, also on an explicit port.
    httpThing(const char* host, int port, int secure);
    httpThing(const httpThing&) = delete;
    httpThing& operator=(const httpThing&) = delete;
    virtual ~httpThing();

    bool connected() const
    {
        return connected_;
    }

protected:
    std::unique_ptr<char[]> host_;
    int32_t port_;
    bool connected_ = false;
    DWORD requestFlags_ = 0;
    // declared in this order so that the connection closes before its session
    httpHandle session_;
    httpHandle connection_;
};

class httpNormal : public httpThing
{
public:
    httpNormal(const char* host, int port, int secure) : httpThing(host, port, secure) {}
    ~httpNormal() override;

    // POSTs `body` to `path` with `headers` (null: none of ours, no Content-Type either). On success
    // `reply` is the body as a new[] C string for the caller; null otherwise.
    int post(const char* path, const char* body, char*& reply, const char* headers);

    // Ends every later request by `deadline`: connecting, sending and waiting for the answer get a third
    // of what remains each, and the body is read only while time remains. A request that runs out fails
    // like any other. Without it the system's time-outs apply.
    void setDeadline(const httpDeadline& deadline)
    {
        deadline_ = deadline;
    }

private:
    int readReply(HINTERNET request, char*& reply);
    // Before each read of the body: false once the deadline has passed, else the wait is cut to what
    // remains.
    bool readTimeLeft(HINTERNET request);

    httpDeadline deadline_;
};

class httpProductAttribute : public httpNormal
{
public:
    // The maker's server, port 443, secure.
    httpProductAttribute() : httpNormal(nullptr, 0, 1) {}
    httpProductAttribute(const char* host, int port, int secure) : httpNormal(host, port, secure) {}
    ~httpProductAttribute() override;

    // The value of `attribute` of `product` as a new[] C string for the caller. Both names are sent
    // as they are, without URL encoding.
    int get(const char* product, const char* attribute, char*& value);
};

class httpVersion : public httpNormal
{
public:
    httpVersion() : httpNormal(nullptr, 0, 1) {}
    httpVersion(const char* host, int port, int secure) : httpNormal(host, port, secure) {}
    ~httpVersion() override;

    // The attribute "version" of `product`: the latest version's comparison key.
    int get(const char* product, char*& value);
};
