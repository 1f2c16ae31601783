// Tests of changeRes and restoreRes: how the values from the settings reach the display.
#include "system/DisplayModes.h"

#include "RuntimeFixture.h"
#include "platform/fake/FakeDisplayMode.h"

#include <gtest/gtest.h>

namespace ombrel::system {
namespace {

struct ChangeRow
{
    const char* name;
    double width, height, bits, freq;
    const char* expected; // the trace line, or nullptr when the display must not be asked
    int answer = 0; // the display's, which changeRes passes on
    const char* restored = nullptr; // restoreRes's trace line when it differs from a change's
};

TEST(DisplayModes, ValuesAreRoundedAndPassedOnAndTheDisplaysAnswerReturned)
{
    const ChangeRow rows[] = {
        { "plain", 800, 600, 32, 60, "display 800x600 bits 32 freq 60" },
        { "ties go to the even neighbour", 799.5, 600.5, 16.5, 59.5, "display 800x600 bits 16 freq 60" },
        { "other fractions go to the nearest", 640.4, 479.6, 31.7, 75.2, "display 640x480 bits 32 freq 75" },
        { "negative values pass", -1, 480, -1, -2, "display -1x480 bits -1 freq -2" },
        { "the display's refusal", 800, 600, 32, 60, "display 800x600 bits 32 freq 60",
            platform::kModeFailed },
        { "depth above 16 bits", 800, 600, 32768, 60, nullptr, 0, "display restore 800x600 bits 0 freq 60" },
        { "width above 32 bits", 3e9, 600, 32, 60, nullptr, 0, "display restore 0x600 bits 32 freq 60" },
        { "refresh above 32 bits", 800, 600, 32, 1e12, nullptr, 0, "display restore 800x600 bits 32 freq 0" },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        test::RecordingTrace trace;
        platform::fake::FakeDisplayMode display(trace);
        display.setChangeResult(row.answer);
        int result = changeRes(display, row.width, row.height, row.bits, row.freq);
        if (row.expected) {
            EXPECT_EQ(result, row.answer);
            EXPECT_EQ(trace.lines, std::vector<std::string> { row.expected });
        } else {
            EXPECT_EQ(result, platform::kModeBad);
            EXPECT_TRUE(trace.lines.empty());
        }
        // The desktop's mode is always asked for, rounded alike, with 0 for what does not fit.
        trace.lines.clear();
        EXPECT_EQ(restoreRes(display, row.width, row.height, row.bits, row.freq), 0);
        EXPECT_EQ(trace.lines,
            std::vector<std::string> {
                row.restored ? row.restored : "display restore " + std::string(row.expected + 8) });
    }
}

} // namespace
} // namespace ombrel::system
