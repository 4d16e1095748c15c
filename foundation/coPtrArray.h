// coPtrArray: a growable array of untyped pointers that grows by whole steps. It owns its storage,
// never the pointees. Invariant: 0 <= count() <= capacity().
#pragma once

class coPtrArray
{
public:
    // Allocates `capacity` pointers when capacity >= 1; grows by `step` (at least 1) at a time.
    coPtrArray(int capacity, int step);
    ~coPtrArray();
    coPtrArray(const coPtrArray&) = delete;
    coPtrArray& operator=(const coPtrArray&) = delete;

    // Room for n pointers: true at once when n <= capacity, else grows by whole steps; false when
    // the memory is not there (nothing changes then).
    bool ensure(int n);
    // Appends p, growing as needed; false when it could not grow.
    bool append(void* p);
    // Drops the last pointer (nothing when empty) and returns it.
    void* removeLast();
    // Count to 0; with freeStorage the storage goes too and the capacity becomes 0.
    void clear(bool freeStorage);

    int count() const
    {
        return count_;
    }
    int capacity() const
    {
        return capacity_;
    }
    int step() const
    {
        return step_;
    }
    // Pointer i, 0 <= i < count().
    void* at(int i) const;

private:
    void** data_;
    int capacity_;
    int count_;
    int step_;
};
