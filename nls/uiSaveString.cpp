// Buffers are malloc'ed and shared through one heap counter; a released string is left pointing at a
// marker so that a use after release shows up at once.
#include "nls/uiSaveString.h"

#include <cstdlib>
#include <cstring>

namespace
{

char* const releasedMarker = reinterpret_cast<char*>(uintptr_t(0x2BAD));

char* copyOf(const char* text, size_t count)
{
    char* buffer = static_cast<char*>(std::malloc(count + 1));
    if (!buffer)
        return nullptr;
    std::memcpy(buffer, text, count);
    buffer[count] = '\0';
    return buffer;
}

} // namespace

bool uiSaveString::same(const char* a, const char* b)
{
    if (a == b)
        return true;
    if (!a || !*a)
        return !b || !*b;
    return b && std::strcmp(a, b) == 0;
}

void uiSaveString::adoptBuffer(char* buffer, size_t length)
{
    if (!buffer)
        return;
    count_ = static_cast<int32_t*>(std::malloc(sizeof(int32_t)));
    if (!count_) {
        std::free(buffer);
        return;
    }
    *count_ = 1;
    text_ = buffer;
    length_ = uint32_t(length);
}

uiSaveString::uiSaveString(const char* text)
{
    if (text) {
        size_t n = std::strlen(text);
        adoptBuffer(copyOf(text, n), n);
    }
}

uiSaveString::uiSaveString(const char* text, size_t count)
{
    if (text && count) {
        size_t n = strnlen(text, count);
        adoptBuffer(copyOf(text, n), n);
    }
}

uiSaveString::uiSaveString(Adopt, char* heapText)
{
    if (heapText)
        adoptBuffer(heapText, std::strlen(heapText));
}

uiSaveString::uiSaveString(const uiSaveString& other)
{
    if (other.count_) {
        text_ = other.text_;
        count_ = other.count_;
        length_ = other.length_;
        ++*count_;
    }
}

uiSaveString& uiSaveString::operator=(const uiSaveString& other)
{
    if (this == &other)
        return *this;
    if (other.count_)
        ++*other.count_; // before dropping: the two may share one buffer
    drop();
    if (other.count_) {
        text_ = other.text_;
        count_ = other.count_;
        length_ = other.length_;
    }
    return *this;
}

uiSaveString::~uiSaveString()
{
    drop();
    text_ = releasedMarker;
}

void uiSaveString::drop()
{
    if (text_ && count_ && --*count_ == 0) {
        std::free(text_);
        std::free(count_);
    }
    text_ = nullptr;
    count_ = nullptr;
    length_ = 0;
}

void uiSaveString::append(const char* text)
{
    if (!text || !*text)
        return;
    size_t add = std::strlen(text);
    size_t old = text_ ? length_ : 0;
    char* buffer = static_cast<char*>(std::malloc(old + add + 1));
    if (!buffer)
        return;
    if (old)
        std::memcpy(buffer, text_, old);
    std::memcpy(buffer + old, text, add + 1);
    drop();
    adoptBuffer(buffer, old + add);
}
