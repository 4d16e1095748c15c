// The string table's element operations, slot storage and growth. Invariant: slots_ is null or holds
// exactly 2^sizeBits() pairs, and count() pairs of them have a non-null key.
#include "foundation/utStringutStringcoTablePcoSet.h"

#include <new>
#include <vector>

namespace
{
const utStringPair& asPair(const void* e)
{
    return *static_cast<const utStringPair*>(e);
}

// Growth stops here: a bigger table would not fit the 32-bit count anyway.
constexpr uint32_t maximumBits = 30;
} // namespace

utStringutStringcoTablePcoSet::utStringutStringcoTablePcoSet(uint32_t initialBits, uint32_t maxLoad)
    : basecoSet(initialBits > maximumBits ? maximumBits : initialBits, maxLoad), slots_(nullptr)
{
}

utStringutStringcoTablePcoSet::~utStringutStringcoTablePcoSet()
{
    freeSlots();
}

const utStringPair& utStringutStringcoTablePcoSet::emptyPair()
{
    static const utStringPair empty;
    return empty;
}

const void* utStringutStringcoTablePcoSet::emptyElement() const
{
    return &emptyPair();
}

void* utStringutStringcoTablePcoSet::cloneElement(const void*) const
{
    return nullptr;
}

void utStringutStringcoTablePcoSet::assignElement(void* to, const void* from) const
{
    auto* target = static_cast<utStringPair*>(to);
    target->key = asPair(from).key;
    target->value = asPair(from).value;
}

bool utStringutStringcoTablePcoSet::elementsDiffer(const void* a, const void* b) const
{
    return !(asPair(a).key == asPair(b).key);
}

uint32_t utStringutStringcoTablePcoSet::hashElement(const void* e) const
{
    return asPair(e).key.hash();
}

bool utStringutStringcoTablePcoSet::isEmpty(const void* e) const
{
    return asPair(e).key == emptyPair().key;
}

void utStringutStringcoTablePcoSet::destroyElement(void*) const {}

bool utStringutStringcoTablePcoSet::makeSlots(uint32_t bits)
{
    freeSlots();
    slots_ = new (std::nothrow) utStringPair[size_t(1) << bits];
    return slots_ != nullptr;
}

void utStringutStringcoTablePcoSet::freeSlots()
{
    // delete[] destroys the pairs from the last to the first
    delete[] slots_;
    slots_ = nullptr;
}

void utStringutStringcoTablePcoSet::storeAt(uint32_t i, const void* e)
{
    if (!slots_ && !makeSlots(sizeBits()))
        return;
    assignElement(&slots_[i], e);
}

const void* utStringutStringcoTablePcoSet::elementAt(uint32_t i) const
{
    return slots_ ? &slots_[i] : &emptyPair();
}

const utStringPair& utStringutStringcoTablePcoSet::slot(uint32_t i) const
{
    return i < slotCount() ? slots_[i] : emptyPair();
}

void utStringutStringcoTablePcoSet::growCheck(uint32_t count)
{
    if (sizeBits() < maximumBits && overLoaded(count))
        rebuild(sizeBits() + 1);
}

void utStringutStringcoTablePcoSet::rebuild(uint32_t bits)
{
    std::vector<utStringPair> kept;
    kept.reserve(count());
    for (uint32_t i = 0; i < slotCount(); ++i)
        if (!isEmpty(&slots_[i]))
            kept.push_back(slots_[i]);
    reset(bits, true);
    for (const utStringPair& pair : kept)
        insertElement(&pair);
    // the copies go from the last to the first, as the slots do
    while (!kept.empty())
        kept.pop_back();
}

void utStringutStringcoTablePcoSet::reset(uint32_t bits, bool reallocate)
{
    resetCounters(reallocate || !slots_ ? (bits > maximumBits ? maximumBits : bits) : sizeBits());
    if (!reallocate && slots_) {
        for (uint32_t i = 0; i < slotCount(); ++i)
            slots_[i] = utStringPair();
        return;
    }
    makeSlots(sizeBits());
}

const utStringPair* utStringutStringcoTablePcoSet::insert(const utStringPair& pair)
{
    return static_cast<const utStringPair*>(insertOrFind(&pair));
}

const utStringPair& utStringutStringcoTablePcoSet::lookup(const utStringPair& pair) const
{
    return asPair(find(&pair));
}

utString& utStringutStringcoTablePcoSet::getOrAdd(const utString& key)
{
    utStringPair probeFor{key, utString()};
    const utStringPair* found = &lookup(probeFor);
    if (found->key.isNull()) {
        insert(probeFor);
        found = &lookup(probeFor);
    }
    if (found->key.isNull()) {
        scratch_ = utString();
        return scratch_;
    }
    // the pair lives in our own slots; only the shared empty pair is truly const
    return const_cast<utStringPair*>(found)->value;
}

const utString& utStringutStringcoTablePcoSet::findValue(const utString& key) const
{
    return lookup(utStringPair{key, utString()}).value;
}
