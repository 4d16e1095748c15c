// One compiled message catalog (MO format, revision 0, either byte order) read whole into memory.
// Invariant: a database that did not fail has had every header field, table entry, string offset and
// length checked against the image size, and every string has its NUL at its stated length, so lookups
// never leave the image. Loaded databases are shared through a process-wide list kept in path order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_set>

#include "nls/nlsError.h"
#include "nls/uiSaveString.h"

class nlsDataBase
{
public:
    // Reports a database error: returns non-zero when the program may go on.
    using ReportHook = int (*)(void* object, const nlsError& error);

    // Loads the catalog file; code() tells how it went.
    explicit nlsDataBase(const char* path);
    // Loads a catalog image held in memory (copied), with the same checks.
    nlsDataBase(const void* bytes, size_t size);
    ~nlsDataBase();
    nlsDataBase(const nlsDataBase&) = delete;
    nlsDataBase& operator=(const nlsDataBase&) = delete;

    uint32_t code() const
    {
        return code_;
    }
    bool failed() const
    {
        return failed_ != 0;
    }
    const uiSaveString& path() const
    {
        return path_;
    }
    int32_t references() const
    {
        return references_;
    }
    uint32_t messageCount() const
    {
        return count_;
    }
    bool hashed() const
    {
        return hashTable_ != nullptr;
    }
    const nlsDataBase* next() const
    {
        return next_;
    }

    // The translation of a message inside the image, or `key` itself when the catalog has none.
    const char* translate(const char* key) const;
    // The same for a printf format: a translation that reads other arguments than `key` (see
    // nlsPrintfFormat) is refused, and `key` itself comes back. `firstRefusal` tells whether this call
    // is the first to refuse that message, so that it is reported once.
    const char* translateFormat(const char* key, bool& firstRefusal) const;

    // The shared list: find adds a reference on a hit; open loads and lists a new database with one
    // reference, or returns null with the error code; release drops one reference.
    static nlsDataBase* find(const char* path);
    static nlsDataBase* open(const char* path, uint32_t& code);
    static void release(nlsDataBase* database);
    static const nlsDataBase* first();

    // Passes a non-zero code to the report hook; a hook answering 0 raises an assertion failure.
    static void report(void* object, const nlsError& error);
    static ReportHook& reportHook();
    // The default hook: prints the error, lets warnings pass and stops on errors.
    static int printReport(void* object, const nlsError& error);

private:
    void loadFile(const char* path);
    void validate();
    void fail(uint32_t code);
    uint32_t word(const unsigned char* at) const;
    template <bool Swapped> const char* hashLookup(const char* key) const;
    template <bool Swapped> const char* searchLookup(const char* key) const;

    nlsDataBase* next_ = nullptr;
    unsigned char* image_ = nullptr;
    size_t size_ = 0;
    uiSaveString path_;
    uint32_t swapped_ = 0;
    uint32_t count_ = 0;
    const unsigned char* sources_ = nullptr;
    const unsigned char* translations_ = nullptr;
    uint32_t hashSize_ = 0;
    const unsigned char* hashTable_ = nullptr;
    int32_t references_ = 0;
    uint32_t failed_ = 0;
    uint32_t code_ = 0;
    // the refused translations, by their place in the image
    mutable std::unordered_set<const char*> refused_;
};
