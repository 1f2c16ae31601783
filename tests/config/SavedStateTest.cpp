// Tests of ombrel.cfg: its exact text, reading it back, files cut short or damaged, and safe saving.
#include "config/NumberText.h"
#include "config/SavedState.h"
#include "core/AtomicFile.h"
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
    SavedState state;
    state.curSkin = "\\Ombrel\\";
    state.saverDelay = 300;
    state.songMode = -1;
    state.songVolume = -250.5f;
    state.curSong = 12;
    state.muted = true;
    state.lastIndex = 41;
    state.lastPath = 3;
    state.fontSize = 14;
    return state;
}

TEST(SavedState, NumbersTakeTheirShortestPlainForm)
{
    struct Row
    {
        double value;
        const char* text;
    };
    const Row doubles[] = { { 300, "300" }, { -1, "-1" }, { 0.5, "0.5" }, { 12, "12" }, { 0, "0" },
        { -0.0, "0" }, { 0.1, "0.1" }, { 1e20, "100000000000000000000" }, { 1e-7, "0.0000001" },
        { 86400.25, "86400.25" } };
    for (const Row& row : doubles) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(numberText(row.value), row.text);
    }
    // A 32-bit value is as short as its own precision allows.
    EXPECT_EQ(numberText(0.1f), "0.1");
    EXPECT_EQ(numberText(-250.5f), "-250.5");
}

TEST(SavedState, WritesEachLineInItsTextFormAndReadsItBack)
{
    struct Row
    {
        const char* name;
        SavedState state;
        const char* text; // the file as written
    };
    SavedState neverSaver = sample();
    neverSaver.saverDelay = -1;
    neverSaver.lastIndex = -1;
    neverSaver.muted = false;
    SavedState fractions = sample();
    fractions.saverDelay = 0.5;
    fractions.curSong = 1.25f;
    fractions.curSkin = "\\My Skin, New\\"; // a comma inside the quotes stays
    const Row rows[] = {
        { "sample", sample(), "\"\\Ombrel\\\"\r\n300\r\n-1\r\n-250.5\r\n12\r\n#TRUE#\r\n41\r\n3\r\n14\r\n" },
        { "saver off, nothing selected", neverSaver,
            "\"\\Ombrel\\\"\r\n-1\r\n-1\r\n-250.5\r\n12\r\n#FALSE#\r\n-1\r\n3\r\n14\r\n" },
        { "fractions", fractions,
            "\"\\My Skin, New\\\"\r\n0.5\r\n-1\r\n-250.5\r\n1.25\r\n#TRUE#\r\n41\r\n3\r\n14\r\n" },
    };
    platform::DiskFiles disk;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TempHome home;
        std::string path = home.path() + kSavedStateFileName;
        ASSERT_EQ(saveCfg(disk, path, row.state), "");
        EXPECT_EQ(home.read(kSavedStateFileName), row.text);
        SavedState read;
        double saverCount = 7;
        EXPECT_EQ(openCfg(path, read, saverCount), "");
        EXPECT_TRUE(read == row.state) << formatCfg(read);
        EXPECT_EQ(saverCount, row.state.saverDelay);
    }
    // Values never read are written as the numbers they count as.
    EXPECT_EQ(formatCfg(SavedState {}), "\"\"\r\n0\r\n0\r\n0\r\n0\r\n#FALSE#\r\n0\r\n0\r\n0\r\n");
}

TEST(SavedState, ReadsFilesWrittenByHand)
{
    TempHome home;
    std::string path = home.write("ombrel.cfg", "\"\\Neon\\\"\n  600 \n0\n0,3\n#false#\n2.5\n2\n0\n");
    SavedState state;
    double saverCount = 0;
    EXPECT_EQ(openCfg(path, state, saverCount), "");
    // A comma ends a field as a line end does; 2.5 rounds to the even neighbour.
    EXPECT_EQ(formatCfg(state), "\"\\Neon\\\"\r\n600\r\n0\r\n0\r\n3\r\n#FALSE#\r\n2\r\n2\r\n0\r\n");
}

// A damaged file stops the reading: what came before stands, the rest keeps its old value.
TEST(SavedState, StopsAtTheFirstBadValue)
{
    struct Row
    {
        const char* name;
        const char* text;
        const char* message;
        std::function<void(SavedState&)> read; // what the reading changed in sample()
        double saverCount;
    };
    const char* head = "\"\\New\\\"\r\n60\r\n0\r\n0\r\n5\r\n";
    auto headRead = [](SavedState& s) {
        s.curSkin = "\\New\\";
        s.songMode = s.songVolume = 0;
        s.curSong = 5;
    };
    auto headAndSwitch = [&](SavedState& s) {
        headRead(s);
        s.muted = false;
    };
    const Row rows[] = {
        { "ends after the song", "", "ombrel.cfg line 6: muted is missing", headRead, 60 },
        { "word where a switch stands", "maybe\r\n", "ombrel.cfg line 6: muted is not #TRUE# or #FALSE#",
            headRead, 60 },
        { "word where a number stands", "#FALSE#\r\nten\r\n1\r\n0\r\n",
            "ombrel.cfg line 7: lastIndex is not a number", headAndSwitch, 60 },
        { "index beyond 16 bits", "#FALSE#\r\n40000\r\n", "line 7: lastIndex must lie between", headAndSwitch,
            60 },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TempHome home;
        std::string path = home.write("ombrel.cfg", std::string(head) + row.text);
        SavedState state = sample();
        double saverCount = 99;
        std::string message = openCfg(path, state, saverCount);
        EXPECT_NE(message.find(row.message), std::string::npos) << message;
        // The delay is copied from the countdown only after a complete read.
        SavedState expected = sample();
        row.read(expected);
        EXPECT_EQ(formatCfg(state), formatCfg(expected));
        EXPECT_EQ(saverCount, row.saverCount);
    }
}

TEST(SavedState, MissingFileChangesNothing)
{
    TempHome home;
    SavedState state;
    double saverCount = 5;
    std::string message = openCfg(home.path() + "ombrel.cfg", state, saverCount);
    EXPECT_NE(message.find("cannot open"), std::string::npos);
    EXPECT_FALSE(state.lastPath.has_value());
    EXPECT_FALSE(state.lastIndex.has_value());
    EXPECT_EQ(saverCount, 5);
}

TEST(SavedState, SavingReplacesTheWholeFileOrNothing)
{
    platform::DiskFiles disk;
    TempHome home;
    std::string path = home.write("ombrel.cfg", std::string(500, 'x'));
    ASSERT_EQ(saveCfg(disk, path, sample()), "");
    EXPECT_EQ(home.read("ombrel.cfg"), formatCfg(sample()));
    size_t entries = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(home.root()))
        ++entries;
    EXPECT_EQ(entries, 1u); // no temporary file left behind

    // A place that cannot be written to gives a message and leaves what is there alone.
    std::filesystem::create_directories(home.root() / "taken");
    EXPECT_NE(saveCfg(disk, home.path() + "taken", sample()), "");
    EXPECT_TRUE(std::filesystem::is_directory(home.root() / "taken"));
    EXPECT_NE(saveCfg(disk, home.path() + "missing/ombrel.cfg", sample()), "");
    EXPECT_FALSE(home.exists("missing"));
}

} // namespace
} // namespace ombrel::config
