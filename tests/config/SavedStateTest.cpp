// Tests of ombrel.cfg: its exact text, reading it back, files cut short or damaged, and safe saving.
#include "config/NumberText.h"
#include "config/SavedState.h"
#include "platform/Files.h"

#include "TempHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

namespace ombrel::config {
namespace {

using test::TempHome;

SavedState sample()
{
    return { .curSkin = "\\Ombrel\\",
        .saverDelay = 300,
        .songMode = -1,
        .songVolume = -250.5f,
        .curSong = 12,
        .muted = true,
        .lastIndex = 41,
        .lastPath = 3,
        .fontSize = 14 };
}

TEST(SavedState, NumbersTakeTheirShortestPlainForm)
{
    const std::pair<double, const char*> rows[]
        = { { 300, "300" }, { -1, "-1" }, { 0.5, "0.5" }, { -0.0, "0" }, { 0.1, "0.1" },
              { 1e20, "100000000000000000000" }, { 1e-7, "0.0000001" }, { 86400.25, "86400.25" } };
    for (const auto& [value, text] : rows)
        EXPECT_EQ(numberText(value), text);
    EXPECT_EQ(numberText(0.1f), "0.1") << "a 32-bit value is as short as its own precision allows";
}

TEST(SavedState, WritesEachLineInItsTextFormAndReadsItBack)
{
    SavedState other = sample();
    other.saverDelay = -1;
    other.lastIndex = -1;
    other.muted = false;
    other.curSong = 1.25f;
    other.curSkin = "\\My Skin, New\\"; // a comma inside the quotes stays
    const std::pair<SavedState, const char*> rows[] = {
        { sample(), "\"\\Ombrel\\\"\r\n300\r\n-1\r\n-250.5\r\n12\r\n#TRUE#\r\n41\r\n3\r\n14\r\n" },
        { other, "\"\\My Skin, New\\\"\r\n-1\r\n-1\r\n-250.5\r\n1.25\r\n#FALSE#\r\n-1\r\n3\r\n14\r\n" },
    };
    platform::DiskFiles disk;
    for (const auto& [state, text] : rows) {
        TempHome home;
        std::string path = home.write(kSavedStateFileName, std::string(500, 'x'));
        ASSERT_EQ(saveCfg(disk, path, state), "");
        EXPECT_EQ(home.read(kSavedStateFileName), text);
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home.root()), {}), 1)
            << "no temporary left";
        SavedState read;
        double saverCount = 7;
        EXPECT_EQ(openCfg(path, read, saverCount), "");
        EXPECT_TRUE(read == state) << formatCfg(read);
        EXPECT_EQ(saverCount, state.saverDelay);
    }
    // A file written by hand: a comma ends a field as a line end does; 2.5 rounds to the even neighbour.
    TempHome home;
    SavedState read;
    double saverCount = 0;
    EXPECT_EQ(openCfg(home.write("ombrel.cfg", "\"\\Neon\\\"\n  600 \n0\n0,3\n#false#\n2.5\n2\n0\n"), read,
                  saverCount),
        "");
    EXPECT_EQ(formatCfg(read), "\"\\Neon\\\"\r\n600\r\n0\r\n0\r\n3\r\n#FALSE#\r\n2\r\n2\r\n0\r\n");
    // Values never read are written as the numbers they count as.
    EXPECT_EQ(formatCfg(SavedState {}), "\"\"\r\n0\r\n0\r\n0\r\n0\r\n#FALSE#\r\n0\r\n0\r\n0\r\n");
}

// A damaged file stops the reading: what came before stands, the rest keeps its old value, and the
// delay reaches the countdown at once but the saved state only after a complete read. A missing file
// changes nothing.
TEST(SavedState, StopsAtTheFirstBadValue)
{
    struct Row
    {
        const char* text; // after the head; nullptr: no file
        const char* message;
        bool switchRead;
    };
    const Row rows[] = {
        { "", "ombrel.cfg line 6: muted is missing", false },
        { "maybe\r\n", "ombrel.cfg line 6: muted is not #TRUE# or #FALSE#", false },
        { "#FALSE#\r\nten\r\n1\r\n0\r\n", "ombrel.cfg line 7: lastIndex is not a number", true },
        { "#FALSE#\r\n40000\r\n", "line 7: lastIndex must lie between", true },
        { nullptr, "cannot open", false },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.message);
        TempHome home;
        if (row.text)
            home.write("ombrel.cfg", std::string("\"\\New\\\"\r\n60\r\n0\r\n0\r\n5\r\n") + row.text);
        SavedState state = sample();
        double saverCount = 99;
        std::string message = openCfg(home.path() + "ombrel.cfg", state, saverCount);
        EXPECT_NE(message.find(row.message), std::string::npos) << message;
        SavedState expected = sample();
        if (row.text) {
            expected.curSkin = "\\New\\";
            expected.songMode = expected.songVolume = 0;
            expected.curSong = 5;
        }
        if (row.switchRead)
            expected.muted = false;
        EXPECT_EQ(formatCfg(state), formatCfg(expected));
        EXPECT_EQ(saverCount, row.text ? 60 : 99);
    }
}

} // namespace
} // namespace ombrel::config
