// Tests of rounding, whole-number conversions with their range checks, and colour scaling.
#include "core/VbMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ombrel::core {
namespace {

TEST(VbMath, RoundsTiesToEvenAndConvertsWithinTheRangeOnly)
{
    for (auto [value, rounded] : { std::pair { 2.5, 2.0 }, { -2.5, -2.0 }, { 1.5, 2.0 }, { -2.6, -3.0 },
             { 4503599627370497.0, 4503599627370497.0 } })
        EXPECT_EQ(roundHalfEven(value), rounded) << value;

    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(toInteger(32766.5), 32766);
    EXPECT_EQ(toInteger(-32768.5), -32768);
    for (double value : { 32767.5, -32769.0, 1e300, nan, -inf })
        EXPECT_FALSE(toInteger(value).has_value()) << value;
    EXPECT_EQ(toLong(-2147483648.5), -2147483647 - 1);
    for (double value : { 2147483647.5, -2147483649.0, nan, inf })
        EXPECT_FALSE(toLong(value).has_value()) << value;
}

TEST(VbMath, ScalesAColourAsOneNumber)
{
    const std::tuple<uint32_t, double, uint32_t> rows[] = {
        { 0x010305, 0.5, 0x008182 }, // 66309 / 2 = 33154.5 rounds to even; by channel it would be 0x000202
        { 0x00FF05, 0.5, 0x007F82 }, // green spills into red: the hue changes
        { rgb(200, 10, 128), 2, 0xFFFFFF }, // kept within 24 bits
        { rgb(200, 10, 128), -1, 0 },
        { rgb(200, 10, 128), std::nan(""), 0 },
        { 0xFF000000u | rgb(10, 20, 30), 1, rgb(10, 20, 30) },
    };
    for (const auto& [colour, factor, scaled] : rows)
        EXPECT_EQ(scaleColour(colour, factor), scaled) << factor;
}

} // namespace
} // namespace ombrel::core
