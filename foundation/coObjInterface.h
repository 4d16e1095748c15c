// coObjInterface: what a container needs to know about one element, behind untyped pointers.
// Invariant: an element is "empty" exactly when isEmpty says so; containers never look inside one.
#pragma once

#include <cstdint>

class coObjInterface
{
public:
    // The shared element that stands for "nothing here"; never to be written.
    virtual const void* emptyElement() const = 0;
    // A heap copy of `e`, or null when the element kind cannot be cloned.
    virtual void* cloneElement(const void* e) const = 0;
    // Makes `to` a copy of `from`.
    virtual void assignElement(void* to, const void* from) const = 0;
    // True unless the two elements have equal keys.
    virtual bool elementsDiffer(const void* a, const void* b) const = 0;
    virtual uint32_t hashElement(const void* e) const = 0;
    virtual bool isEmpty(const void* e) const = 0;
    // Releases what cloneElement made.
    virtual void destroyElement(void* e) const = 0;

protected:
    coObjInterface() = default;
    coObjInterface(const coObjInterface&) = delete;
    coObjInterface& operator=(const coObjInterface&) = delete;
    ~coObjInterface() = default;
};
