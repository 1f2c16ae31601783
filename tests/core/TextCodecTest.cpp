// Tests of telling UTF-8 from Windows-1252 and of the ASCII-only case changes.
#include "core/TextCodec.h"

#include <gtest/gtest.h>

#include <string>

namespace ombrel::core {
namespace {

TEST(TextCodec, AcceptsOnlyWellFormedUtf8)
{
    struct Case
    {
        const char* name;
        std::string bytes;
        bool valid;
    };
    const Case cases[] = {
        { "four bytes", "\xF0\x9F\x98\x80", true },
        { "highest code point", "\xF4\x8F\xBF\xBF", true },
        { "below surrogates", "\xED\x9F\xBF", true },
        { "overlong two bytes", "\xC0\x80", false },
        { "overlong four bytes", "\xF0\x8F\xBF\xBF", false },
        { "surrogate", "\xED\xA0\x80", false },
        { "above U+10FFFF", "\xF4\x90\x80\x80", false },
        { "cut short", "ab\xC3", false },
        { "bad continuation", "\xE2\x28\xA1", false },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(isValidUtf8(row.bytes), row.valid);
    }
}

TEST(TextCodec, ShowsUtf8AsItIsAndOtherTextAsWindows1252)
{
    struct Case
    {
        const char* name;
        std::string bytes;
        std::string shown;
    };
    const Case cases[] = {
        { "utf-8 kept", "Caf\xC3\xA9", "Caf\xC3\xA9" },
        { "latin-1 range", "Caf\xE9", "Caf\xC3\xA9" },
        { "euro", "\x80", "\xE2\x82\xAC" },
        { "y diaeresis", "\x9F", "\xC5\xB8" },
        { "undefined byte kept as C1", "\x81", "\xC2\x81" },
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(toDisplayText(row.bytes), row.shown);
        EXPECT_TRUE(isValidUtf8(toDisplayText(row.bytes)));
    }
}

} // namespace
} // namespace ombrel::core
