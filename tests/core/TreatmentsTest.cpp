// Tests of what readers do with a line once read: the value at a column, trimming, the YES test and
// the two number treatments.
#include "core/FieldReader.h"
#include "core/VbMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>

namespace ombrel::core {
namespace {

TEST(Treatments, ValueAtColumnAndTheYesTest)
{
    const std::tuple<const char*, int, const char*> rows[] = {
        { "Roms=C:\\roms\\", 6, "C:\\roms\\" },
        { "Roms=", 6, "" }, // column just past the end
        { "abc", 10, "" },
        { "Opts= -x  ", 6, " -x  " }, // kept as it stands
        { "C:\\roms\\", 6, "ms\\" }, // no label: the column counts all the same
    };
    for (const auto& [line, column, value] : rows)
        EXPECT_EQ(valueAt(line, column), value) << line;

    for (const char* value : { " Yes ", "\tyEs  " })
        EXPECT_TRUE(isYes(value)) << value;
    for (const char* value : { "Y", "", "YES!", "Label=YES", "Y ES" })
        EXPECT_FALSE(isYes(value)) << value;
}

TEST(Treatments, NumbersWholeAndLeading)
{
    // The whole text as a number, or nothing; the number at its start, 0 if none.
    const std::tuple<const char*, std::optional<double>, double> rows[] = {
        { " 60 ", 60, 60 },
        { "\t-0.75\t", -0.75, -0.75 },
        { "2.5E-1", 0.25, 0.25 },
        { "60ms", {}, 60 },
        { "1.5e2kg", {}, 150 },
        { "1.2.3", {}, 1.2 },
        { "1,5", {}, 1 },
        { "", {}, 0 },
        { "--5", {}, 0 },
        { "inf", {}, 0 },
        { "0x10", {}, 0 },
    };
    for (const auto& [text, number, leading] : rows) {
        EXPECT_EQ(parseNumber(text), number) << text;
        EXPECT_DOUBLE_EQ(leadingNumber(text), leading) << text;
    }
    // Too large a number overflows rather than wraps, and then fits no whole-number type.
    EXPECT_TRUE(std::isinf(leadingNumber("1e400")));
    EXPECT_FALSE(toInteger(leadingNumber("32768")).has_value());
    EXPECT_EQ(toInteger(leadingNumber("32767 rows")), 32767);
}

} // namespace
} // namespace ombrel::core
