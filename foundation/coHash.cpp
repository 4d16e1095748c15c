// Probing and insertion for coHash. Invariant: probing visits each slot at most once before it
// meets an empty one, because insertion grows the slots before the last empty slot is taken.
#include "foundation/coHash.h"

coHash::coHash(uint32_t initialBits, uint32_t maxLoad)
    : count_(0), initialBits_(initialBits), maxLoad_(maxLoad), sizeBits_(initialBits), checksum_(0)
{
}

uint32_t coHash::probe(const void* e) const
{
    uint32_t bits = sizeBits();
    uint32_t mask = bits >= 32 ? 0xFFFFFFFFu : (1u << bits) - 1;
    uint32_t spread = hashElement(e) * 0x9E3779B9u;
    uint32_t index = bits == 0 ? 0 : (spread >> (32 - bits)) & mask;
    if (isEmpty(elementAt(index)))
        return index;
    // the bound only guards a table that broke its load rule; a healthy one stops at an empty slot
    for (uint64_t steps = 0; steps <= mask && elementsDiffer(elementAt(index), e); ++steps) {
        index = (index - 1) & mask;
        if (isEmpty(elementAt(index)))
            break;
    }
    return index;
}

const void* coHash::insertElement(const void* e)
{
    if (isEmpty(e))
        return nullptr;
    uint32_t index = probe(e);
    const void* there = elementAt(index);
    if (!isEmpty(there))
        return elementsDiffer(there, e) ? nullptr : there;
    storeAt(index, e);
    if (isEmpty(elementAt(index)))
        return nullptr; // the slots could not be created; nothing was stored
    ++count_;
    checksum_ ^= hashElement(e);
    growCheck(count_);
    return nullptr;
}

const void* coHash::lookupElement(const void* e) const
{
    const void* there = elementAt(probe(e));
    return isEmpty(there) || elementsDiffer(there, e) ? emptyElement() : there;
}

bool coHash::overLoaded(uint32_t count) const
{
    // 64-bit so that huge tables cannot wrap the comparison
    return static_cast<int64_t>(count) * 100 >= static_cast<int64_t>(maxLoad_) << sizeBits();
}

void coHash::resetCounters(uint32_t bits)
{
    count_ = 0;
    checksum_ = 0;
    sizeBits_ = bits;
}
