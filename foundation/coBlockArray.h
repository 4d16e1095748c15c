// coBlockArray<T>: elements (utString or int32_t) in blocks of 256 that never move once made, so a
// reference to an element stays valid while the array grows. Invariant: blocks 0..blockCount-1 exist
// and size() <= blockCount * 256; element i lives in block i >> 8 at i & 255.
#pragma once

#include <cstdint>

#include "foundation/coPtrArray.h"
#include "foundation/utString.h"

template <class T> class coBlockArray
{
public:
    coBlockArray();
    // Copies every element of `other` (strings share their text).
    coBlockArray(const coBlockArray& other);
    coBlockArray& operator=(const coBlockArray& other);
    ~coBlockArray();

    int size() const
    {
        return size_;
    }
    int blockCount() const
    {
        return blockCount_;
    }
    // Element i for writing: blocks up to i's are made and size grows to i + 1 when i >= size().
    // A negative index, or memory that cannot be had, is an assertion and yields a scratch element.
    T& at(int i);
    // Element i for reading, 0 <= i < size() (an assertion otherwise; a scratch element comes back).
    const T& get(int i) const;
    // Makes block b the current one (a cache for sequential access).
    void select(int b);
    // Size to 0; with freeStorage every block is destroyed and freed as well.
    void clear(bool freeStorage);
    // Assigns `count` elements of source from sourceStart onto this array from destStart, count cut
    // to what the source holds. Overlapping copies within one array keep the source's old values.
    void copyRange(const coBlockArray& source, int count, int destStart, int sourceStart);

private:
    static constexpr int defaultLength = 256;
    static constexpr int defaultShift = 8;

    T* block(int b) const
    {
        return static_cast<T*>(blocks_.at(b));
    }
    bool addBlock();

    int32_t blockCount_;
    int32_t size_;
    int32_t blockLength_;
    int32_t blockShift_;
    coPtrArray blocks_;
    int32_t currentIndex_;
    T* current_;
    T scratch_;
};

extern template class coBlockArray<utString>;
extern template class coBlockArray<int32_t>;
