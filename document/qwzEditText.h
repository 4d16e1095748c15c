// The text an edit control is given for UTF-8 bytes: UTF-16, with a CR put before every LF that is not
// already preceded by one. Built in one counting pass and one converting pass into a buffer sized once,
// so that opening a large file costs no regrowth and no intermediate UTF-8 copy.
#pragma once

#include <cstddef>
#include <memory>

class qwzEditText
{
public:
    // The largest text the holder builds, in UTF-16 units (the edit control counts in a signed 32-bit).
    static constexpr std::size_t maxUnits = 0x7FFFFFFE;

    qwzEditText() = default;
    qwzEditText(const qwzEditText&) = delete;
    qwzEditText& operator=(const qwzEditText&) = delete;

    // Number of CRs that the line-end conversion adds to `utf8`.
    static std::size_t crCount(const char* utf8, std::size_t length);
    // Copies `utf8` to `out` (room for length + crCount bytes) with the CRs added; returns the bytes written.
    static std::size_t crlfCopy(const char* utf8, std::size_t length, char* out);

    // UTF-16 units that assign() would produce (CRs included). With `exact`, also whether the text is
    // UTF-8 that comes back byte for byte when the units are written as UTF-8 again (no sequence shown as
    // '?', no lone 0x80).
    static std::size_t unitCount(const char* utf8, std::size_t length, bool* exact = nullptr);

    // Converts `utf8` into `out`, which has room for unitCount() units and a NUL; returns the units written.
    // For callers that own the destination (an edit control's own buffer).
    static std::size_t convert(const char* utf8, std::size_t length, char16_t* out);

    // Converts `utf8`; false (holder left empty) when the result would exceed `limit` units or memory is
    // short. A null or empty input gives the empty text.
    bool assign(const char* utf8, std::size_t length, std::size_t limit = maxUnits);

    // NUL-terminated UTF-16 text; never null.
    const char16_t* text() const
    {
        return units_ ? units_.get() : u"";
    }
    std::size_t size() const
    {
        return size_;
    }
    // Frees the text.
    void clear();

private:
    std::unique_ptr<char16_t[]> units_;
    std::size_t size_ = 0;
};
