// The catalog library's reference-counted string. Holders of one buffer share one counter; a change of
// text always makes a new buffer, so no holder ever sees another's edit.
#pragma once

#include <cstddef>
#include <cstdint>

class uiSaveString
{
public:
    struct Adopt {
    };

    uiSaveString() = default;
    uiSaveString(const char* text); // NOLINT: implicit, like the literals it wraps
    uiSaveString(const char* text, size_t count);
    // Takes ownership of a malloc'ed buffer without copying it.
    uiSaveString(Adopt, char* heapText);
    uiSaveString(const uiSaveString& other);
    uiSaveString& operator=(const uiSaveString& other);
    virtual ~uiSaveString();

    // Appends text; the old buffer stays with its other holders.
    void append(const char* text);

    const char* text() const
    {
        return text_;
    }
    uint32_t length() const
    {
        return length_;
    }
    bool empty() const
    {
        return !text_ || !*text_;
    }
    // Number of holders of the buffer; 0 for an empty string without one.
    int32_t shares() const
    {
        return count_ ? *count_ : 0;
    }
    bool operator==(const char* other) const
    {
        return same(text_, other);
    }
    bool operator==(const uiSaveString& other) const
    {
        return same(text_, other.text_);
    }

    // Null and "" are alike; otherwise byte for byte.
    static bool same(const char* a, const char* b);

private:
    void drop();
    void adoptBuffer(char* buffer, size_t length);

    char* text_ = nullptr;
    int32_t* count_ = nullptr;
    uint32_t length_ = 0;
};
