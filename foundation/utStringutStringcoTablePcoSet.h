// utStringutStringcoTablePcoSet: the string-to-string hash table (a set of key/value pairs keyed by
// the key). Invariant: a slot is empty exactly when its key is the null string; the null string can
// never be a key, the empty text can.
#pragma once

#include "foundation/basecoSet.h"
#include "foundation/utString.h"

struct utStringPair {
    utString key;
    utString value;
};

class utStringutStringcoTablePcoSet : public basecoSet
{
public:
    // 2^initialBits slots (made on first store); grows by doubling when count * 100 reaches
    // maxLoad * slots. The system builds its tables with (4, 50).
    utStringutStringcoTablePcoSet(uint32_t initialBits = 4, uint32_t maxLoad = 50);
    ~utStringutStringcoTablePcoSet();

    // Stores a copy of `pair` unless its key is null (refused) or present. Returns the pair already
    // stored under that key, or null.
    const utStringPair* insert(const utStringPair& pair);
    // The stored pair with pair.key, or the shared empty pair (both strings null).
    const utStringPair& lookup(const utStringPair& pair) const;
    // The value stored under `key`, inserting (key, null) first when absent. A null key gets a scratch
    // value that belongs to no pair.
    utString& getOrAdd(const utString& key);
    // The value stored under `key`, or a null string.
    const utString& findValue(const utString& key) const;
    // Empties the table: keeps the slots (and the size) unless `reallocate` or none exist yet, else
    // makes 2^bits fresh slots.
    void reset(uint32_t bits, bool reallocate);

    // Slots in slot order, for iteration (empty slots have a null key); slotCount() is 0 before the
    // first store.
    uint32_t slotCount() const
    {
        return slots_ ? 1u << sizeBits() : 0;
    }
    const utStringPair& slot(uint32_t i) const;

    static const utStringPair& emptyPair();

private:
    const void* emptyElement() const override;
    void* cloneElement(const void* e) const override;
    void assignElement(void* to, const void* from) const override;
    bool elementsDiffer(const void* a, const void* b) const override;
    uint32_t hashElement(const void* e) const override;
    bool isEmpty(const void* e) const override;
    void destroyElement(void* e) const override;
    void storeAt(uint32_t i, const void* e) override;
    const void* elementAt(uint32_t i) const override;
    void growCheck(uint32_t count) override;

    void rebuild(uint32_t bits);
    bool makeSlots(uint32_t bits);
    void freeSlots();

    utStringPair* slots_;
    utString scratch_;
};
