// The file watch's decision. The file is opened for every check that reads it, and its length taken from
// the open file: a status call may still show the old length of a file that another program is writing.
#include "document/qwzFileWatch.h"

#include <cerrno>
#include <cstdio>
#include <memory>

#include "foundation/utTextConversion.h"
#include "platform/platform.h"

namespace
{

struct FileCloser {
    void operator()(std::FILE* f) const
    {
        std::fclose(f);
    }
};

} // namespace

void qwzFileWatch::know(long long size, std::string_view tail, long long writeTime)
{
    exists_ = true;
    size_ = size;
    writeTime_ = writeTime;
    tail_.clear();
    keepTail(tail);
}

long long qwzFileWatch::writeTimeOf(const utString& path)
{
    platform::Status status;
    utUtf8ToUtf16 name(path);
    return platform::stat(name.c_str(), status) == 0 ? status.writeTime : -1;
}

bool qwzFileWatch::knowFromDisk()
{
    writeTime_ = writeTimeOf(path_);
    long long length = 0;
    std::string bytes;
    if (readFrom(-1, length, bytes) != Read::Ok) {
        exists_ = false;
        return false;
    }
    exists_ = true;
    size_ = length;
    tail_.clear();
    keepTail(bytes);
    return true;
}

qwzFileWatch::Change qwzFileWatch::look(std::string& added)
{
    platform::Status status;
    utUtf8ToUtf16 name(path_);
    int error = platform::stat(name.c_str(), status);
    if (error == ENOENT || error == ENOTDIR || (error == 0 && status.kind == platform::EntryKind::Directory)) {
        if (!exists_)
            return Change::Unchanged;
        // what was known stays: a file that comes back as it was is no change
        exists_ = false;
        return Change::Gone;
    }
    if (error != 0)
        return Change::Unchanged;
    if (exists_ && status.size == size_ && status.writeTime == writeTime_)
        return Change::Unchanged;

    long long oldEnd = size_;
    long long from = oldEnd - static_cast<long long>(tail_.size());
    long long length = 0;
    std::string bytes;
    Read read = readFrom(from, length, bytes);
    if (read == Read::Missing) {
        if (!exists_)
            return Change::Unchanged;
        exists_ = false;
        return Change::Gone;
    }
    if (read == Read::Unreadable)
        return Change::Unchanged;

    exists_ = true;
    writeTime_ = status.writeTime;
    bool kept = length >= oldEnd && bytes.size() >= tail_.size() && bytes.compare(0, tail_.size(), tail_) == 0;
    if (!kept) {
        // what follows is the new file's own tail, however far from the old end it lies
        if ((length < oldEnd || length - from > static_cast<long long>(tailSize)) &&
            readFrom(-1, length, bytes) != Read::Ok) {
            exists_ = false;
            return Change::Rewritten;
        }
        size_ = length;
        tail_.clear();
        keepTail(bytes);
        return Change::Rewritten;
    }
    std::string_view fresh = std::string_view(bytes).substr(tail_.size());
    if (fresh.empty())
        return Change::Unchanged;
    added.append(fresh);
    size_ = oldEnd + static_cast<long long>(fresh.size());
    keepTail(fresh);
    return Change::Grown;
}

qwzFileWatch::Read qwzFileWatch::readFrom(long long from, long long& length, std::string& bytes) const
{
    // shared, so that the watch never keeps another program from rotating the file or a save from replacing it
    utUtf8ToUtf16 name(path_);
    std::unique_ptr<std::FILE, FileCloser> file(platform::fopenShared(name.c_str()));
    if (!file)
        return errno == ENOENT || errno == ENOTDIR ? Read::Missing : Read::Unreadable;
    length = platform::fileLength(file.get());
    if (length < 0)
        return Read::Unreadable;
    // -1, or a start past a shorter file: its tail
    if (from < 0 || from > length)
        from = length < static_cast<long long>(tailSize) ? 0 : length - static_cast<long long>(tailSize);
    long long wanted = length - from;
    long long limit = static_cast<long long>(tailSize + maxRead);
    if (wanted > limit)
        wanted = limit;
    if (platform::seek(file.get(), from) != 0)
        return Read::Unreadable;
    bytes.resize(static_cast<std::size_t>(wanted));
    std::size_t got = std::fread(bytes.data(), 1, bytes.size(), file.get());
    // the file was cut while being read: the next look sees its new state whole
    if (got != bytes.size())
        return Read::Unreadable;
    length = from + wanted;
    return Read::Ok;
}

void qwzFileWatch::keepTail(std::string_view bytes)
{
    if (bytes.size() >= tailSize) {
        tail_.assign(bytes.substr(bytes.size() - tailSize));
        return;
    }
    std::size_t keep = tailSize - bytes.size();
    if (tail_.size() > keep)
        tail_.erase(0, tail_.size() - keep);
    tail_.append(bytes);
}
