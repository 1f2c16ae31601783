// RealClock: the wall of a real run: milliseconds of the steady clock since the program started.
#pragma once

#include "runtime/Clock.h"

#include <chrono>

namespace ombrel::platform::sdl {

class RealClock final : public runtime::Clock
{
public:
    RealClock()
        : m_start(std::chrono::steady_clock::now())
    {
    }
    int64_t nowMs() const override
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - m_start)
            .count();
    }

private:
    std::chrono::steady_clock::time_point m_start;
};

} // namespace ombrel::platform::sdl
