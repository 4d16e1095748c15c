// basecoSet: the hash set as its users see it: insert, look up, count. The element kind and the slot
// storage come from the subclass. Invariant: only elements with a non-empty key are ever stored.
#pragma once

#include "foundation/coHash.h"

class basecoSet : protected coHash
{
public:
    using coHash::checksum;
    using coHash::count;
    using coHash::sizeBits;

protected:
    basecoSet(uint32_t initialBits, uint32_t maxLoad) : coHash(initialBits, maxLoad) {}
    ~basecoSet() = default;

    // The element already stored under e's key, or null after storing e (or refusing an empty key).
    const void* insertOrFind(const void* e)
    {
        return insertElement(e);
    }
    // The stored element with e's key, or the shared empty element.
    const void* find(const void* e) const
    {
        return lookupElement(e);
    }
};
