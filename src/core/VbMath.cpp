// VbMath: rounding and whole-number conversions with the cabinet logic's rules.
#include "core/VbMath.h"

#include <algorithm>
#include <cmath>

namespace ombrel::core {

namespace {

// Rounds and range-checks without ever casting a value that does not fit (NaN and infinities included).
template <typename T> std::optional<T> toWhole(double value, double low, double high)
{
    if (!std::isfinite(value))
        return std::nullopt;
    double whole = roundHalfEven(value);
    if (whole < low || whole > high)
        return std::nullopt;
    return static_cast<T>(whole);
}

} // namespace

double roundHalfEven(double value)
{
    if (!std::isfinite(value))
        return value;
    // Written out rather than left to the floating-point rounding mode, which code elsewhere may change.
    double below = std::floor(value);
    double fraction = value - below;
    if (fraction > 0.5)
        return below + 1;
    if (fraction < 0.5)
        return below;
    return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

double vbInt(double value)
{
    return std::floor(value);
}

std::optional<int16_t> toInteger(double value)
{
    return toWhole<int16_t>(value, -32768.0, 32767.0);
}

std::optional<int32_t> toLong(double value)
{
    return toWhole<int32_t>(value, -2147483648.0, 2147483647.0);
}

uint32_t scaleColour(uint32_t colour, double factor)
{
    const double scaled = roundHalfEven(static_cast<double>(colour & 0xFFFFFFu) * factor);
    if (!(scaled > 0)) // also NaN
        return 0;
    return static_cast<uint32_t>(std::min(scaled, static_cast<double>(0xFFFFFFu)));
}

} // namespace ombrel::core
