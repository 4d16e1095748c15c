// A moment by which a piece of network work must be over. A deadline that is not set never passes, and
// the system's own time-outs apply.
#pragma once

#include <chrono>
#include <cstdint>

class httpDeadline
{
public:
    using Clock = std::chrono::steady_clock;

    // No deadline.
    httpDeadline() = default;

    static httpDeadline after(std::chrono::milliseconds span)
    {
        httpDeadline d;
        d.end_ = Clock::now() + span;
        d.set_ = true;
        return d;
    }

    bool isSet() const
    {
        return set_;
    }

    // What is left, 0 once passed (and for a deadline that is not set).
    uint32_t remainingMs() const
    {
        if (!set_)
            return 0;
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end_ - Clock::now()).count();
        return left > 0 ? static_cast<uint32_t>(left) : 0;
    }

    // A deadline that leaves `parts` - 1 equal parts of what remains to the work after it.
    httpDeadline share(uint32_t parts) const
    {
        return set_ && parts > 1 ? after(std::chrono::milliseconds(remainingMs() / parts)) : *this;
    }

private:
    Clock::time_point end_{};
    bool set_ = false;
};
