// Loading, checking and searching one catalog image, and the process-wide list of loaded catalogs.
// Every offset is checked in subtraction form (`len >= size - off`) so that no sum can wrap.
#include "nls/nlsDataBase.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "foundation/utAssert.h"
#include "nls/nlsFileKind.h"
#include "platform/platform.h"

namespace
{

constexpr uint32_t nativeMagic = 0x950412de;
constexpr uint32_t swappedMagic = 0xde120495;
constexpr size_t headerSize = 28;

nlsDataBase* listHead = nullptr;

inline uint32_t swap32(uint32_t v)
{
    return __builtin_bswap32(v);
}

inline uint32_t rawWord(const unsigned char* at)
{
    uint32_t v;
    std::memcpy(&v, at, sizeof v);
    return v;
}

// The classic hashpjw over the key's bytes taken as signed chars.
inline uint32_t hashKey(const char* key, size_t& length)
{
    uint32_t h = 0;
    const char* p = key;
    for (; *p; ++p) {
        h = (h << 4) + uint32_t(int32_t(static_cast<signed char>(*p)));
        uint32_t g = h & 0xF0000000u;
        if (g)
            h ^= (g >> 24) ^ g;
    }
    length = size_t(p - key);
    return h;
}

} // namespace

nlsDataBase::nlsDataBase(const char* path) : path_(path)
{
    loadFile(path);
}

nlsDataBase::nlsDataBase(const void* bytes, size_t size)
{
    image_ = static_cast<unsigned char*>(std::malloc(size ? size : 1));
    if (!image_) {
        fail(nlsError::NoMemory);
        return;
    }
    if (size)
        std::memcpy(image_, bytes, size);
    size_ = size;
    validate();
}

nlsDataBase::~nlsDataBase()
{
    std::free(image_);
}

void nlsDataBase::fail(uint32_t code)
{
    code_ = code;
    failed_ = 1;
    std::free(image_);
    image_ = nullptr;
    size_ = 0;
    count_ = 0;
    hashSize_ = 0;
    sources_ = translations_ = hashTable_ = nullptr;
}

void nlsDataBase::loadFile(const char* path)
{
    nlsFileHandle file = nlsOpenFile(path, "rb");
    if (!file)
        return fail(nlsError::CannotOpen);
    platform::Status status;
    int statFailed = nlsStat(path, status);
    if ((statFailed && status.size < static_cast<long long>(headerSize)) || status.size < 0)
        return fail(nlsError::CannotStat);
    size_t size = size_t(status.size);
    image_ = static_cast<unsigned char*>(std::malloc(size ? size : 1));
    if (!image_)
        return fail(nlsError::NoMemory);
    size_t got = 0;
    while (got < size) {
        size_t n = std::fread(image_ + got, 1, size - got, file.get());
        if (n == 0) // a read error, or the file shrank under us
            return fail(nlsError::CannotStat);
        got += n;
    }
    size_ = size;
    validate();
}

uint32_t nlsDataBase::word(const unsigned char* at) const
{
    uint32_t v = rawWord(at);
    return swapped_ ? swap32(v) : v;
}

// One pass over the header, both string tables and the hash table. On failure the image is dropped.
void nlsDataBase::validate()
{
    const size_t size = size_;
    if (size < headerSize)
        return fail(nlsError::Corrupt);
    uint32_t magic = rawWord(image_);
    if (magic != nativeMagic && magic != swappedMagic)
        return fail(nlsError::BadMagic);
    swapped_ = magic != nativeMagic;
    if (word(image_ + 4) != 0)
        return fail(nlsError::BadRevision);
    const uint32_t n = word(image_ + 8), o = word(image_ + 12), t = word(image_ + 16);
    const uint32_t s = word(image_ + 20), h = word(image_ + 24);
    if (o > size || n > (size - o) / 8 || t > size || n > (size - t) / 8)
        return fail(nlsError::Corrupt);
    const bool useHash = s >= 3 && h != 0;
    if (useHash) {
        if (h > size || s > (size - h) / 4)
            return fail(nlsError::Corrupt);
        // a table without an empty slot could only end its probes by the bound: refuse it outright
        bool anyEmpty = false;
        for (const unsigned char *slot = image_ + h, *end = slot + size_t(s) * 4; slot != end; slot += 4) {
            uint32_t v = word(slot);
            if (v > n)
                return fail(nlsError::Corrupt);
            anyEmpty |= v == 0;
        }
        if (!anyEmpty)
            return fail(nlsError::Corrupt);
    }
    const unsigned char* tables[2] = {image_ + o, image_ + t};
    for (const unsigned char* table : tables) {
        for (const unsigned char *entry = table, *end = table + size_t(n) * 8; entry != end; entry += 8) {
            uint32_t length = word(entry), offset = word(entry + 4);
            if (offset > size || length >= size - offset || image_[size_t(offset) + length] != 0)
                return fail(nlsError::Corrupt);
        }
    }
    count_ = n;
    sources_ = image_ + o;
    translations_ = image_ + t;
    hashSize_ = s;
    hashTable_ = useHash ? image_ + h : nullptr;
}

const char* nlsDataBase::translation(uint32_t index) const
{
    return reinterpret_cast<const char*>(image_ + word(translations_ + size_t(index) * 8 + 4));
}

const char* nlsDataBase::translate(const char* key) const
{
    if (!key || failed_ || !image_)
        return key;
    const char* found = hashTable_ ? hashLookup(key) : searchLookup(key);
    return found ? found : key;
}

// Double hashing as the catalog compiler lays it out. The probe is bounded by the table size, so a
// table without an empty slot ends as a miss instead of looping.
const char* nlsDataBase::hashLookup(const char* key) const
{
    size_t length;
    const uint32_t h = hashKey(key, length);
    const uint32_t s = hashSize_;
    const uint32_t step = 1 + h % (s - 2);
    // the swapped size is converted a second time here; the quirk is kept, and the index guarded
    const uint32_t wrap = swapped_ ? swap32(s) : s;
    uint32_t index = h % s;
    for (uint32_t probes = 0; probes < s; ++probes) {
        uint32_t slot = word(hashTable_ + size_t(index) * 4);
        if (slot == 0)
            return nullptr;
        const unsigned char* entry = sources_ + size_t(slot - 1) * 8;
        if (word(entry) == length && std::memcmp(image_ + word(entry + 4), key, length) == 0)
            return translation(slot - 1);
        if (index >= wrap - step)
            index = index + step - wrap;
        else
            index = (index + step) % s;
        if (index >= s)
            index %= s;
    }
    return nullptr;
}

const char* nlsDataBase::searchLookup(const char* key) const
{
    uint32_t lo = 0, hi = count_;
    while (lo < hi) {
        uint32_t mid = lo + (hi - lo) / 2;
        const char* source = reinterpret_cast<const char*>(image_ + word(sources_ + size_t(mid) * 8 + 4));
        int c = std::strcmp(key, source);
        if (c < 0)
            hi = mid;
        else if (c > 0)
            lo = mid + 1;
        else
            return translation(mid);
    }
    return nullptr;
}

// Only the head can be found: the walk stops at the first path that sorts before the sought one.
nlsDataBase* nlsDataBase::find(const char* path)
{
    for (nlsDataBase* db = listHead; db; db = db->next_) {
        int c = std::strcmp(db->path_.text() ? db->path_.text() : "", path ? path : "");
        if (c == 0) {
            ++db->references_;
            return db;
        }
        if (c < 0)
            break;
    }
    return nullptr;
}

nlsDataBase* nlsDataBase::open(const char* path, uint32_t& code)
{
    nlsDataBase* db = new nlsDataBase(path);
    code = db->code_;
    if (db->failed_) {
        delete db;
        return nullptr;
    }
    db->references_ = 1;
    const char* key = db->path_.text() ? db->path_.text() : "";
    if (!listHead || std::strcmp(key, listHead->path_.text()) < 0) {
        db->next_ = listHead;
        listHead = db;
        return db;
    }
    nlsDataBase* before = listHead;
    while (before->next_ && std::strcmp(before->next_->path_.text(), key) < 0)
        before = before->next_;
    db->next_ = before->next_;
    before->next_ = db;
    return db;
}

void nlsDataBase::release(nlsDataBase* database)
{
    for (nlsDataBase** link = &listHead; *link; link = &(*link)->next_) {
        if (*link != database)
            continue;
        if (--database->references_ == 0) {
            *link = database->next_;
            database->next_ = nullptr;
            delete database;
        }
        return;
    }
}

const nlsDataBase* nlsDataBase::first()
{
    return listHead;
}

nlsDataBase::ReportHook& nlsDataBase::reportHook()
{
    static ReportHook hook = &nlsDataBase::printReport;
    return hook;
}

int nlsDataBase::printReport(void*, const nlsError& error)
{
    error.print();
    return error.isError() ? 0 : 1;
}

void nlsDataBase::report(void* object, const nlsError& error)
{
    ReportHook hook = reportHook();
    if (!hook || error.code() == 0 || hook(object, error) != 0)
        return;
    char message[64];
    std::snprintf(message, sizeof message, "nlsDataBase failed - with error %d", int(error.code()));
    utAssertionFailed("nls/nlsDataBase", 450, message);
}
