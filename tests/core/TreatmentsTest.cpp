// Tests of what readers do with a line once read: the value at a column, trimming, the YES test and
// the two number treatments.
#include "core/FieldReader.h"
#include "core/VbMath.h"

#include <gtest/gtest.h>

#include <cmath>
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
        { "abc", 1, "abc" },
        { "Opts= -x  ", 6, " -x  " }, // kept as it stands
        { "C:\\roms\\", 6, "ms\\" }, // no label: the column counts all the same
        { "", 1, "" },
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

TEST(Treatments, NumberAcceptsWrittenNumbers)
{
    struct Case
    {
        const char* text;
        double value;
    };
    const Case cases[] = {
        { "800", 800 },
        { " 60 ", 60 },
        { "-1", -1 },
        { "1.5", 1.5 },
        { "1e3", 1000 },
        { "+2", 2 },
        { ".5", 0.5 },
        { "5.", 5 },
        { "2.5E-1", 0.25 },
        { "007", 7 },
        { "\t-0.75\t", -0.75 },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.text);
        auto value = parseNumber(row.text);
        ASSERT_TRUE(value.has_value());
        EXPECT_DOUBLE_EQ(*value, row.value);
    }
}

TEST(Treatments, NumberRejectsEverythingElse)
{
    for (const char* text : { "", "   ", "abc", "1.2.3", "12px", "inf", "nan", "0x10", "-", ".", "1e", "1 2",
             "--1", "1,5", "#TRUE#" }) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(parseNumber(text).has_value());
    }
}

TEST(Treatments, WholeNumberTakesTheLeadingNumber)
{
    struct Case
    {
        const char* text;
        double value;
    };
    const Case cases[] = {
        { "60ms", 60 },
        { "  75 ", 75 },
        { "abc", 0 },
        { "", 0 },
        { "-3x", -3 },
        { "1.5e2kg", 150 },
        { "1e", 1 },
        { "--5", 0 },
        { "12 34", 12 },
        { ".5.5", 0.5 },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.text);
        EXPECT_DOUBLE_EQ(leadingNumber(row.text), row.value);
    }
}

TEST(Treatments, HugeNumbersOverflowRatherThanWrap)
{
    EXPECT_TRUE(std::isinf(leadingNumber("1e400")));
    EXPECT_EQ(leadingNumber("1e-400"), 0.0);
    EXPECT_FALSE(toInteger(leadingNumber("99999999999999999999999")).has_value());
    EXPECT_FALSE(toInteger(leadingNumber("32768")).has_value());
    EXPECT_EQ(toInteger(leadingNumber("32767 rows")), 32767);
}

} // namespace
} // namespace ombrel::core
