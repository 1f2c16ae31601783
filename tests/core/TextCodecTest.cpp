// Tests of telling UTF-8 from Windows-1252 text.
#include "core/TextCodec.h"

#include <gtest/gtest.h>

#include <string>

namespace ombrel::core {
namespace {

TEST(TextCodec, AcceptsOnlyWellFormedUtf8)
{
    // Four bytes, the highest code point, just below the surrogates; then what is not UTF-8: overlong
    // forms, a surrogate, above U+10FFFF, cut short, a bad continuation.
    for (const char* valid : { "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF", "\xED\x9F\xBF" })
        EXPECT_TRUE(isValidUtf8(valid)) << valid;
    for (const char* invalid :
        { "\xC0\x80", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "ab\xC3", "\xE2\x28\xA1" })
        EXPECT_FALSE(isValidUtf8(invalid)) << invalid;
}

TEST(TextCodec, ShowsUtf8AsItIsAndOtherTextAsWindows1252)
{
    const std::pair<std::string, std::string> rows[] = {
        { "Caf\xC3\xA9", "Caf\xC3\xA9" },
        { "Caf\xE9", "Caf\xC3\xA9" },
        { "\x80", "\xE2\x82\xAC" }, // euro
        { "\x9F", "\xC5\xB8" }, // Y diaeresis
        { "\x81", "\xC2\x81" }, // undefined in Windows-1252: kept as the C1 control
    };
    for (const auto& [bytes, shown] : rows)
        EXPECT_EQ(toDisplayText(bytes), shown) << bytes;
}

} // namespace
} // namespace ombrel::core
