// What the document last knew of its file, and what a new look at the file finds. The document's text
// starts the file as long as the file is at least as long as it was and its last bytes before the old end
// (up to tailSize of them) are still the bytes the document has: then only new bytes were added after
// them. Any other change is a rewrite. Every change found becomes what is known, so each is found once.
// Reads the file on every look that finds a new size or write time: call it off the window's thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/utString.h"

class qwzFileWatch
{
public:
    enum class Change {
        Unchanged, // also while the file cannot be read for now (locked, a share that does not answer)
        Grown,     // bytes were added after the old end and nothing before it changed
        Rewritten, // shorter, or the bytes before the old end differ (truncated, rotated, rewritten)
        Gone,      // deleted or renamed away
    };
    static constexpr std::size_t tailSize = 4096;
    // The most one look reads of a burst of new bytes; the rest is found by the next look.
    static constexpr std::size_t maxRead = std::size_t(64) << 20;

    qwzFileWatch() = default;
    explicit qwzFileWatch(const utString& path) : path_(path) {}

    const utString& path() const
    {
        return path_;
    }
    long long size() const
    {
        return size_;
    }

    // Knows the file as the document showed or saved it: its first `size` bytes, of which `tail` are the last
    // (only the last tailSize of `tail` are kept), written at `writeTime` (a platform::Status time taken
    // before the bytes were read, or after they were written). With -1 for an unknown time, the first look
    // reads the file to compare.
    void know(long long size, std::string_view tail, long long writeTime = -1);
    // The write time of `path` now; -1 when it cannot be had.
    static long long writeTimeOf(const utString& path);
    // Knows the file as it is on disk now; false (and known as gone) when it cannot be read.
    bool knowFromDisk();

    // Looks at the file again. Grown appends the new bytes to `added` (at most maxRead of them).
    Change look(std::string& added);

private:
    // Reads the file's length and the bytes from `from` to its end (at most maxRead past the old end).
    enum class Read { Ok, Missing, Unreadable };
    Read readFrom(long long from, long long& length, std::string& bytes) const;
    void keepTail(std::string_view bytes);

    utString path_;
    bool exists_ = false;
    long long size_ = 0;
    long long writeTime_ = -1;
    std::string tail_;
};
