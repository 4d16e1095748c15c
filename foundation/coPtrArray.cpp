// coPtrArray's growth: capacity rises by whole steps until the wanted index fits. Invariant: the used
// pointers survive every growth in their order.
#include "foundation/coPtrArray.h"

#include <climits>
#include <cstring>
#include <new>

#include "foundation/utAssert.h"

coPtrArray::coPtrArray(int capacity, int step) : data_(nullptr), capacity_(0), count_(0), step_(step < 1 ? 1 : step)
{
    if (capacity >= 1) {
        data_ = new (std::nothrow) void*[static_cast<size_t>(capacity)];
        capacity_ = data_ ? capacity : 0;
    }
}

coPtrArray::~coPtrArray()
{
    delete[] data_;
}

bool coPtrArray::ensure(int n)
{
    if (n <= capacity_)
        return true;
    // grow to hold index n - 1 by whole steps
    long long index = static_cast<long long>(n) - 1;
    long long grown = ((index - capacity_) / step_ + 1) * static_cast<long long>(step_) + capacity_;
    if (grown > INT_MAX)
        grown = INT_MAX;
    void** bigger = new (std::nothrow) void*[static_cast<size_t>(grown)];
    if (!bigger)
        return false;
    if (count_ > 0)
        std::memcpy(bigger, data_, static_cast<size_t>(count_) * sizeof(void*));
    delete[] data_;
    data_ = bigger;
    capacity_ = static_cast<int>(grown);
    return true;
}

bool coPtrArray::append(void* p)
{
    if (count_ == INT_MAX || !ensure(count_ + 1))
        return false;
    data_[count_++] = p;
    return true;
}

void* coPtrArray::removeLast()
{
    return count_ > 0 ? data_[--count_] : nullptr;
}

void coPtrArray::clear(bool freeStorage)
{
    count_ = 0;
    if (freeStorage) {
        delete[] data_;
        data_ = nullptr;
        capacity_ = 0;
    }
}

void* coPtrArray::at(int i) const
{
    UT_ASSERT(i >= 0 && i < count_);
    return i >= 0 && i < count_ ? data_[i] : nullptr;
}
