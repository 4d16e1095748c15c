// coHash: an open-addressing hash set over the slots of a coArrInterface. Keys are placed by
// multiplicative hashing (top bits of hash * 0x9E3779B9) and probed downwards with wrap-around.
// Invariant: the load limit keeps at least one slot empty, so every probe ends.
#pragma once

#include "foundation/coArrInterface.h"

class coHash : protected coArrInterface
{
public:
    uint32_t count() const
    {
        return count_;
    }
    // The XOR of the key hashes inserted since the last reset.
    uint32_t checksum() const
    {
        return checksum_;
    }
    uint32_t sizeBits() const override
    {
        return sizeBits_;
    }

protected:
    coHash(uint32_t initialBits, uint32_t maxLoad);
    ~coHash() = default;

    // The slot holding an element with e's key, or the first empty slot met.
    uint32_t probe(const void* e) const;
    // Stores e unless its key is empty or already present. Returns the present element, or null.
    const void* insertElement(const void* e);
    // The element with e's key, or the empty element.
    const void* lookupElement(const void* e) const;
    // True when `count` elements reach the load limit of the current size.
    bool overLoaded(uint32_t count) const;
    // Count and checksum back to zero, size bits set (the slots are the subclass's).
    void resetCounters(uint32_t bits);

    uint32_t count_;
    uint32_t initialBits_;
    uint32_t maxLoad_;
    uint32_t sizeBits_;
    uint32_t checksum_;
};
