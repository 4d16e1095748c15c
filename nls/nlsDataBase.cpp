// Loading, checking and searching one catalog image, and the process-wide list of loaded catalogs.
// Every offset is checked in subtraction form (`len >= size - off`) so that no sum can wrap.
#include "nls/nlsDataBase.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "foundation/utAssert.h"
#include "nls/nlsFileKind.h"
#include "nls/nlsPrintfFormat.h"
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

// The classic hashpjw over the key's bytes taken as signed chars. The fold stays a branch: it is rarely
// taken, so the critical path per byte is one shift and one add.
inline uint32_t hashKey(const char* key, size_t& length)
{
    uint32_t h = 0;
    const char* p = key;
    for (; *p; ++p) {
        h = (h << 4) + uint32_t(int32_t(static_cast<signed char>(*p)));
        const uint32_t g = h & 0xF0000000u;
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

namespace
{

template <bool Swapped> inline uint32_t load32(const unsigned char* at)
{
    uint32_t v = rawWord(at);
    return Swapped ? swap32(v) : v;
}

// Every slot names an entry or is empty, and at least one is empty. Written without early exits and
// vectorised, since it runs over every slot at each load (GCC's -O2 would not vectorise it).
#if defined(__GNUC__) && !defined(__clang__)
#define NLS_VECTORISE __attribute__((optimize("tree-vectorize")))
#else
#define NLS_VECTORISE
#endif
template <bool Swapped> NLS_VECTORISE bool hashTableValid(const unsigned char* slots, uint32_t size, uint32_t count)
{
    uint32_t beyond = 0, empty = 0; // or-ed flags: no dependency chain longer than one step
    for (uint32_t i = 0; i < size; ++i) {
        const uint32_t v = load32<Swapped>(slots + size_t(i) * 4);
        beyond |= v > count;
        empty |= v == 0;
    }
    return !beyond && empty;
}

// One string lies inside the image and has its NUL at its stated length. Both tests are evaluated
// without short-circuit so that a string costs one branch before its NUL is read.
template <bool Swapped> inline bool stringValid(const unsigned char* image, size_t size, const unsigned char* entry)
{
    const uint32_t length = load32<Swapped>(entry), offset = load32<Swapped>(entry + 4);
    if ((offset >= size) | (length >= size - offset))
        return false;
    return image[size_t(offset) + length] == 0;
}

// Source text i and its translation are checked together: one pass over both tables.
template <bool Swapped>
bool tablesValid(const unsigned char* image, size_t size, uint32_t n, uint32_t o, uint32_t t, uint32_t s, uint32_t h,
                 bool useHash)
{
    if (useHash && !hashTableValid<Swapped>(image + h, s, n))
        return false;
    const unsigned char* sources = image + o;
    const unsigned char* translations = image + t;
    bool valid = true;
    for (size_t i = 0, end = size_t(n) * 8; i != end && valid; i += 8)
        valid = stringValid<Swapped>(image, size, sources + i) && stringValid<Swapped>(image, size, translations + i);
    return valid;
}

} // namespace

// One pass over the header, the hash table and both string tables. On failure the image is dropped.
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
    // sizes below 3 leave the probe step without meaning: such catalogs are searched, not hashed
    const bool useHash = s >= 3 && h != 0;
    if (useHash && (h > size || s > (size - h) / 4))
        return fail(nlsError::Corrupt);
    const bool valid = swapped_ ? tablesValid<true>(image_, size, n, o, t, s, h, useHash)
                                : tablesValid<false>(image_, size, n, o, t, s, h, useHash);
    if (!valid)
        return fail(nlsError::Corrupt);
    count_ = n;
    sources_ = image_ + o;
    translations_ = image_ + t;
    hashSize_ = s;
    hashTable_ = useHash ? image_ + h : nullptr;
}

const char* nlsDataBase::translate(const char* key) const
{
    if (!key || !image_)
        return key;
    const char* found;
    if (hashTable_)
        found = swapped_ ? hashLookup<true>(key) : hashLookup<false>(key);
    else
        found = swapped_ ? searchLookup<true>(key) : searchLookup<false>(key);
    return found ? found : key;
}

const char* nlsDataBase::translateFormat(const char* key, bool& firstRefusal) const
{
    firstRefusal = false;
    const char* found = translate(key);
    if (found == key || nlsPrintfFormat::sameArguments(key, found))
        return found;
    firstRefusal = refused_.insert(found).second;
    return key;
}

// Double hashing as the catalog compiler lays it out. The probe is bounded by the table size, so no
// table can make it loop.
template <bool Swapped> const char* nlsDataBase::hashLookup(const char* key) const
{
    size_t length;
    const uint32_t h = hashKey(key, length);
    const uint32_t s = hashSize_;
    const uint32_t step = 1 + h % (s - 2);
    // the swapped size is converted a second time here; the quirk is kept, and the index guarded
    const uint32_t wrap = Swapped ? swap32(s) : s;
    uint32_t index = h % s;
    for (uint32_t probes = 0; probes < s; ++probes) {
        const uint32_t slot = load32<Swapped>(hashTable_ + size_t(index) * 4);
        if (slot == 0)
            return nullptr;
        const unsigned char* entry = sources_ + size_t(slot - 1) * 8;
        const unsigned char* answer = translations_ + size_t(slot - 1) * 8;
        __builtin_prefetch(answer); // fetched while the source text is compared
        if (load32<Swapped>(entry) == length && std::memcmp(image_ + load32<Swapped>(entry + 4), key, length) == 0)
            return reinterpret_cast<const char*>(image_ + load32<Swapped>(answer + 4));
        if (index >= wrap - step)
            index = index + step - wrap;
        else
            index = (index + step) % s;
        if (index >= s)
            index %= s;
    }
    return nullptr;
}

template <bool Swapped> const char* nlsDataBase::searchLookup(const char* key) const
{
    uint32_t lo = 0, hi = count_;
    while (lo < hi) {
        const uint32_t mid = lo + (hi - lo) / 2;
        const char* source = reinterpret_cast<const char*>(image_ + load32<Swapped>(sources_ + size_t(mid) * 8 + 4));
        const int c = std::strcmp(key, source);
        if (c < 0)
            hi = mid;
        else if (c > 0)
            lo = mid + 1;
        else
            return reinterpret_cast<const char*>(image_ + load32<Swapped>(translations_ + size_t(mid) * 8 + 4));
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
