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

TEST(Treatments, ValueAtColumn)
{
    struct Case
    {
        const char* line;
        int column;
        const char* value;
    };
    const Case cases[] = {
        { "Roms=C:\\roms\\", 6, "C:\\roms\\" },
        { "Roms=", 6, "" }, // column just past the end
        { "abc", 10, "" }, // far past the end
        { "Opts= -x  ", 6, " -x  " }, // kept as it stands
        { "C:\\roms\\", 6, "ms\\" }, // no label: the column counts all the same
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.line) + " @" + std::to_string(row.column));
        EXPECT_EQ(valueAt(row.line, row.column), row.value);
    }
}

TEST(Treatments, YesTest)
{
    for (const char* value : { "yes", " Yes ", "YES", "\tyEs  " }) {
        SCOPED_TRACE(value);
        EXPECT_TRUE(isYes(value));
    }
    for (const char* value : { "Y", "TRUE", "", "  ", "NO", "YES!", "Label=YES", "Y ES", "1" }) {
        SCOPED_TRACE(value);
        EXPECT_FALSE(isYes(value));
    }
}

TEST(Treatments, NumbersWholeAndLeading)
{
    struct Case
    {
        const char* text;
        std::optional<double> number; // the whole text as a number, or nothing
        double leading; // the number at its start, 0 if none
    };
    const Case cases[] = {
        { " 60 ", 60, 60 },
        { "\t-0.75\t", -0.75, -0.75 },
        { "2.5E-1", 0.25, 0.25 },
        { "60ms", {}, 60 },
        { "1.5e2kg", {}, 150 },
        { "1.2.3", {}, 1.2 },
        { "1,5", {}, 1 },
        { "", {}, 0 },
        { "abc", {}, 0 },
        { "--5", {}, 0 },
        { "inf", {}, 0 },
        { "0x10", {}, 0 },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(parseNumber(row.text), row.number);
        EXPECT_DOUBLE_EQ(leadingNumber(row.text), row.leading);
    }
    // Too large a number overflows rather than wraps, and then fits no whole-number type.
    EXPECT_TRUE(std::isinf(leadingNumber("1e400")));
    EXPECT_FALSE(toInteger(leadingNumber("99999999999999999999999")).has_value());
    EXPECT_FALSE(toInteger(leadingNumber("32768")).has_value());
    EXPECT_EQ(toInteger(leadingNumber("32767 rows")), 32767);
}

} // namespace
} // namespace ombrel::core
