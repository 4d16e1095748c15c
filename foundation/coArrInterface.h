// coArrInterface: indexed slots of elements, 2^sizeBits() of them. Invariant: every index handed in is
// below 2^sizeBits(); slots that were never stored read as the empty element.
#pragma once

#include "foundation/coObjInterface.h"

class coArrInterface : public coObjInterface
{
public:
    virtual uint32_t sizeBits() const = 0;
    // Copies `e` into slot i, creating the slots on first use.
    virtual void storeAt(uint32_t i, const void* e) = 0;
    // The element in slot i (the empty element while no slots exist).
    virtual const void* elementAt(uint32_t i) const = 0;
    // Exchanges two slots through a clone; does nothing for element kinds that cannot be cloned.
    virtual void swap(uint32_t a, uint32_t b)
    {
        void* clone = cloneElement(elementAt(a));
        if (!clone)
            return;
        storeAt(a, elementAt(b));
        storeAt(b, clone);
        destroyElement(clone);
    }
    // Stores the element of slot `from` into slot `to`.
    virtual void copyWithin(uint32_t to, uint32_t from)
    {
        storeAt(to, elementAt(from));
    }
    // Called with the element count after each insertion; grows the slots when they are too full.
    virtual void growCheck(uint32_t count) = 0;

protected:
    ~coArrInterface() = default;
};
