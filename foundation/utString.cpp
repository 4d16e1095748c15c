// utString's sharing, editing and conversion. Invariant: share_ is one of the three static markers
// or a heap count >= 1 that all holders of one owned text point to.
#include "foundation/utString.h"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace
{
// The markers are compared by address; their values only steer the "copy before change" rule.
int32_t borrowedMark = 2;
int32_t borrowedNegativeMark = -2;
int32_t soleOwnerMark = 1;
int32_t zeroMark = 0;

// tolower of the C locale on a character taken as signed: bytes above 0x7F stay negative and unchanged.
int lowered(char c)
{
    int v = static_cast<signed char>(c);
    return v >= 'A' && v <= 'Z' ? v - 'A' + 'a' : v;
}
} // namespace

utString::utString() : text_(nullptr), length_(0), share_(&borrowedMark) {}

utString::utString(const char* text)
    : text_(const_cast<char*>(text)), length_(text ? static_cast<int32_t>(std::strlen(text)) : 0), share_(&borrowedMark)
{
}

utString::utString(const char* text, int n) : utString()
{
    if (!text || n < 0)
        return;
    int len = 0;
    while (len < n && text[len])
        ++len;
    char* copy = allocate(len);
    std::memcpy(copy, text, static_cast<size_t>(len));
    adopt(copy, len);
}

utString::utString(char c, int n) : utString()
{
    if (c == '\0' || n < 0)
        return;
    char* filled = allocate(n);
    std::memset(filled, c, static_cast<size_t>(n));
    adopt(filled, n);
}

utString utString::copyOf(const char* text)
{
    utString s(text);
    s.own();
    return s;
}

utString utString::copyOf(const std::string& s)
{
    return utString(s.c_str(), s.size() > INT_MAX ? INT_MAX : static_cast<int>(s.size()));
}

utString::utString(const utString& other) : text_(other.text_), length_(other.length_), share_(other.share_)
{
    other.takeShare();
    share_ = other.share_;
}

utString& utString::operator=(const utString& other)
{
    if (this == &other)
        return *this;
    release();
    other.takeShare();
    text_ = other.text_;
    length_ = other.length_;
    share_ = other.share_;
    return *this;
}

utString::~utString()
{
    release();
}

void utString::takeShare() const
{
    if (share_ == &borrowedMark || share_ == &borrowedNegativeMark || share_ == &zeroMark)
        return;
    if (share_ == &soleOwnerMark)
        share_ = new int32_t(2);
    else
        ++*share_;
}

bool utString::releaseShare()
{
    if (share_ == &borrowedMark || share_ == &borrowedNegativeMark || share_ == &zeroMark)
        return false;
    if (share_ == &soleOwnerMark) {
        share_ = &zeroMark;
        return true;
    }
    if (*share_ < 0)
        ++*share_;
    else
        --*share_;
    if (*share_ != 0)
        return false;
    delete share_;
    share_ = &zeroMark;
    return true;
}

void utString::release()
{
    if (releaseShare())
        delete[] text_;
    text_ = nullptr;
    length_ = 0;
    share_ = &borrowedMark;
}

void utString::own()
{
    if (*share_ == 1 || *share_ == -1 || !text_)
        return;
    char* copy = allocate(length_);
    std::memcpy(copy, text_, static_cast<size_t>(length_));
    adopt(copy, length_);
}

char* utString::allocate(int n)
{
    char* p = new char[static_cast<size_t>(n) + 1];
    p[n] = '\0';
    return p;
}

void utString::adopt(char* text, int length)
{
    release();
    text_ = text;
    length_ = length;
    share_ = &soleOwnerMark;
}

char* utString::writableText()
{
    own();
    return text_;
}

bool operator==(const utString& a, const utString& b)
{
    if (!a.text_ || !b.text_)
        return !a.text_ && !b.text_;
    return std::strcmp(a.text_, b.text_) == 0;
}

int utString::compareNoCase(const utString& other) const
{
    if (!text_ || !other.text_)
        return !text_ ? (!other.text_ ? 0 : -1) : 1;
    const char* a = text_;
    const char* b = other.text_;
    for (;; ++a, ++b) {
        int ca = lowered(*a), cb = lowered(*b);
        if (ca != cb || ca == 0)
            return ca - cb;
    }
}

int utString::find(const utString& sub) const
{
    if (!text_ || !sub.text_ || sub.length_ > length_)
        return -1;
    for (int i = 0; i <= length_ - sub.length_; ++i)
        if (std::memcmp(text_ + i, sub.text_, static_cast<size_t>(sub.length_)) == 0)
            return i;
    return -1;
}

utString utString::tail(int i) const
{
    if (!text_ || i < 0 || i > length_)
        return utString();
    return utString(text_ + i, length_ - i);
}

utString utString::substring(int start, int count) const
{
    if (!text_ || start < 0 || count < 0 || start > length_ || count > length_ - start)
        return utString();
    return utString(text_ + start, count);
}

utString operator+(const utString& a, const utString& b)
{
    utString sum(a);
    sum.append(b);
    return sum;
}

utString& utString::operator+=(const utString& other)
{
    if (!text_)
        return *this = other;
    append(other);
    return *this;
}

void utString::append(const utString& other)
{
    if (!text_ || !other.text_ || other.length_ > INT_MAX - 1 - length_)
        return;
    // keep the other text alive even when it is this string's own
    utString keep(other);
    int old = length_;
    resize(old + keep.length_);
    std::memcpy(text_ + old, keep.text_, static_cast<size_t>(keep.length_) + 1);
}

utString utString::stripLeading(const char* set) const
{
    if (!text_)
        return utString();
    int skip = 0;
    while (skip < length_ && set && text_[skip] && std::strchr(set, text_[skip]))
        ++skip;
    return skip == 0 ? *this : tail(skip);
}

utString utString::stripTrailing(const char* set) const
{
    if (!text_)
        return utString();
    int keep = length_;
    while (keep > 0 && set && text_[keep - 1] && std::strchr(set, text_[keep - 1]))
        --keep;
    return keep == length_ ? *this : substring(0, keep);
}

void utString::remove(int start, int count)
{
    if (!text_ || start < 0 || count <= 0 || start > length_ || count > length_ - start)
        return;
    int n = length_ - count;
    char* rebuilt = allocate(n);
    std::memset(rebuilt, ' ', static_cast<size_t>(n));
    std::memcpy(rebuilt, text_, static_cast<size_t>(start));
    std::memcpy(rebuilt + start, text_ + start + count, static_cast<size_t>(length_ - start - count));
    adopt(rebuilt, n);
}

bool utString::nextToken(const char* delimiters, utString& token)
{
    if (!text_) {
        token = utString();
        return false;
    }
    *this = stripLeading(delimiters);
    if (length_ == 0) {
        *this = utString("");
        token = utString();
        return false;
    }
    int end = 0;
    while (end < length_ && !(delimiters && std::strchr(delimiters, text_[end])))
        ++end;
    if (end == length_) {
        token = *this;
        *this = utString("");
    } else {
        token = substring(0, end);
        *this = tail(end);
    }
    return true;
}

void utString::resize(int n)
{
    if (!text_ || n < 0)
        return;
    char* grown = allocate(n);
    int kept = n < length_ ? n : length_;
    std::memcpy(grown, text_, static_cast<size_t>(kept));
    std::memset(grown + kept, 0, static_cast<size_t>(n - kept));
    adopt(grown, n);
}

bool utString::toInteger(int& value, int& errorPosition) const
{
    errorPosition = -1;
    if (!text_ || length_ == 0) {
        if (text_)
            value = 0;
        errorPosition = 0;
        return false;
    }
    char* end = nullptr;
    errno = 0;
    long v = std::strtol(text_, &end, 10);
    bool range = errno == ERANGE || v > INT_MAX || v < INT_MIN;
    // the platform's long may be wider than 32 bits; clamp as a 32-bit strtol would
    value = v > INT_MAX ? INT_MAX : v < INT_MIN ? INT_MIN : static_cast<int>(v);
    while (*end && std::isspace(static_cast<unsigned char>(*end)))
        ++end;
    if (*end)
        errorPosition = static_cast<int>(end - text_);
    return errorPosition == -1 && !range;
}

uint32_t utString::hash(const char* text, int length)
{
    if (!text || length < 1)
        return 0;
    uint32_t h = 0;
    for (int i = 0; i < length; ++i)
        h ^= static_cast<uint32_t>(static_cast<unsigned char>(text[i])) << (8 * (i % 4));
    return h;
}
