// Clock: the time every timer and trace line is measured by, real or virtual.
#pragma once

#include <cstdint>

namespace ombrel::runtime {

class Clock {
public:
    virtual ~Clock() = default;
    // Milliseconds since the program started.
    virtual int64_t nowMs() const = 0;
};

// A clock that moves only when told: the replay harness and the tests drive it.
class VirtualClock final : public Clock {
public:
    int64_t nowMs() const override { return m_now; }
    // Never moves backwards.
    void advanceTo(int64_t ms)
    {
        if (ms > m_now)
            m_now = ms;
    }
    void advanceBy(int64_t ms) { advanceTo(m_now + ms); }

private:
    int64_t m_now = 0;
};

} // namespace ombrel::runtime
