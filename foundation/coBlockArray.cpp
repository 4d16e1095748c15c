// coBlockArray's blocks, growth and range copies, for strings and 32-bit integers. Invariant: a block
// of strings is 256 constructed strings; a block of integers 256 zeroed words.
#include "foundation/coBlockArray.h"

#include <climits>
#include <new>

#include "foundation/utAssert.h"

template <class T>
coBlockArray<T>::coBlockArray()
    : blockCount_(0), size_(0), blockLength_(defaultLength), blockShift_(defaultShift), blocks_(5, 10),
      currentIndex_(-1), current_(nullptr), scratch_()
{
}

template <class T> coBlockArray<T>::coBlockArray(const coBlockArray& other) : coBlockArray()
{
    *this = other;
}

template <class T> coBlockArray<T>& coBlockArray<T>::operator=(const coBlockArray& other)
{
    if (this == &other)
        return *this;
    clear(true);
    blocks_.ensure(other.blockCount_);
    blockLength_ = other.blockLength_;
    blockShift_ = other.blockShift_;
    copyRange(other, other.size_, 0, 0);
    return *this;
}

template <class T> coBlockArray<T>::~coBlockArray()
{
    clear(true);
}

template <class T> bool coBlockArray<T>::addBlock()
{
    T* fresh = new (std::nothrow) T[static_cast<size_t>(blockLength_)]();
    if (!fresh)
        return false;
    if (!blocks_.append(fresh)) {
        delete[] fresh;
        return false;
    }
    ++blockCount_;
    return true;
}

template <class T> T& coBlockArray<T>::at(int i)
{
    UT_ASSERT(i >= 0);
    if (i < 0)
        return scratch_ = T();
    if (i >= size_) {
        while (blockCount_ <= (i >> blockShift_))
            if (!addBlock()) {
                UT_ASSERT(!"coBlockArray: out of memory");
                return scratch_ = T();
            }
        size_ = i + 1;
    }
    select(i >> blockShift_);
    return current_[i & (blockLength_ - 1)];
}

template <class T> const T& coBlockArray<T>::get(int i) const
{
    UT_ASSERT(i >= 0 && i < size_);
    if (i < 0 || i >= size_)
        return scratch_;
    return block(i >> blockShift_)[i & (blockLength_ - 1)];
}

template <class T> void coBlockArray<T>::select(int b)
{
    if (b < 0 || b >= blockCount_) {
        currentIndex_ = -1;
        current_ = nullptr;
        return;
    }
    currentIndex_ = b;
    current_ = block(b);
}

template <class T> void coBlockArray<T>::clear(bool freeStorage)
{
    size_ = 0;
    if (!freeStorage)
        return;
    // delete[] destroys each block's strings from the last to the first
    while (blocks_.count() > 0)
        delete[] static_cast<T*>(blocks_.removeLast());
    blocks_.clear(true);
    blockCount_ = 0;
    currentIndex_ = -1;
    current_ = nullptr;
}

template <class T>
void coBlockArray<T>::copyRange(const coBlockArray& source, int count, int destStart, int sourceStart)
{
    if (count <= 0 || destStart < 0 || sourceStart < 0 || sourceStart >= source.size_)
        return;
    if (count > source.size_ - sourceStart)
        count = source.size_ - sourceStart;
    if (count - 1 > INT_MAX - destStart)
        return;
    bool backwards = &source == this && sourceStart < destStart && destStart - sourceStart < count;
    for (int k = 0; k < count; ++k) {
        int offset = backwards ? count - 1 - k : k;
        // blocks never move, so the source reference survives the growth in at()
        const T& from = source.get(sourceStart + offset);
        at(destStart + offset) = from;
    }
}

template class coBlockArray<utString>;
template class coBlockArray<int32_t>;
