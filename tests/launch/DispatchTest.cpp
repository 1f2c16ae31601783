// Tests of the choice of program, command line, working folder and kind of launch for a selected row.
#include "launch/EmulatorDispatch.h"

#include <gtest/gtest.h>

#include <string>

namespace ombrel::launch {
namespace {

// A cabinet with the emulators these tests use set up, folders written the Windows way, and one list per emulator.
class DispatchTest : public ::testing::Test
{
protected:
    DispatchTest()
    {
        s.romDir[1] = "roms\\mame\\";
        s.emuExe[1] = "mame.exe";
        s.emuDir[1] = "C:\\mame\\";
        s.emuOpts[1] = " -skip_gameinfo";
        // A user path whose program is spelt like the fixed Daphne's.
        s.emuExe[3] = "daphne.exe";
        s.emuDir[3] = "unused\\";
        s.u64Dir2 = "emus\\u64b\\";
        s.s11Dir = "emus\\s11\\";
        s.s11Opts = "-fullscreen";
        s.daphneDir = "emus\\daphne\\";
        s.daphneOpts = "vldp -fullscreen";
        for (int list : { 1, 3 })
            c.games[static_cast<size_t>(list)].set(1, 1, "pacman");
        c.games[23].set(3, 1, "mace"); // a game of neither Ultra 64 program
        c.games[25].set(1, 1, "tekken");
        c.extras.set(1, 1, "notepad.exe");
        c.extras.set(1, 3, "C:\\windows\\");
        c.extras.set(1, 4, "readme.txt");
    }

    config::Settings s;
    catalogue::Catalogue c;
};

TEST_F(DispatchTest, RowsTheLaunchScenariosDoNotReach)
{
    struct Row
    {
        const char* name;
        int path;
        int row;
        std::string exe, rom; // runExe and runRom after the launch
        LaunchPlan plan;
    };
    using K = LaunchKind;
    const Row rows[] = {
        // An empty list reads the empty row: two blanks in a row.
        { "empty row", 1, 0, "mame.exe", "",
            { K::Blocking, "C:\\mame\\mame.exe   -skip_gameinfo", "C:\\mame\\", true } },
        { "user path named like a fixed emulator", 3, 1, "daphne.exe", "pacman",
            { K::Timed, "emus\\daphne\\daphne.exe pacman vldp -fullscreen", "emus\\daphne\\", true } },
        // Extras leave runExe and runRom alone and do not look for the exit button.
        { "extras", 27, 1, "old.exe", "old",
            { K::Blocking, "C:\\windows\\notepad.exe readme.txt", "C:\\windows\\", false } },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Dispatch d = dispatch(row.path, row.row, s, c, "old.exe", "old");
        EXPECT_EQ(d.runExe, row.exe);
        EXPECT_EQ(d.runRom, row.rom);
        ASSERT_TRUE(d.plan);
        EXPECT_EQ(d.plan->kind, row.plan.kind);
        EXPECT_EQ(d.plan->commandLine, row.plan.commandLine);
        EXPECT_EQ(d.plan->folder, row.plan.folder);
        EXPECT_EQ(d.plan->checkExitbut, row.plan.checkExitbut);
    }
}

TEST_F(DispatchTest, SwitchesPickTheOtherProgramAndNamesMatchWithCase)
{
    s.s11NewPlugins = true; // the scenarios run the old plugins' program
    s.emuExe[1] = "Daphne.exe";
    EXPECT_EQ(dispatch(25, 1, s, c, "", "").plan->commandLine, "emus\\s11\\s11emu-newplugins.exe 5 -fullscreen");
    EXPECT_EQ(dispatch(1, 1, s, c, "", "").plan->kind, LaunchKind::Blocking);
}

TEST_F(DispatchTest, UltraSixtyFourGameWithoutProgramKeepsTheLastOne)
{
    // The last launch's program decides: one of the fixed emulators starts again as it did ...
    Dispatch d = dispatch(23, 3, s, c, "u64emu2.exe", "ki2");
    EXPECT_EQ(d.runExe, "u64emu2.exe");
    EXPECT_EQ(d.runRom, "mace");
    ASSERT_TRUE(d.plan);
    EXPECT_EQ(d.plan->commandLine, "emus\\u64b\\u64emu2.exe");
    // ... but a user path's program has no folder or options on this list, so nothing starts.
    d = dispatch(23, 3, s, c, "mame.exe", "pacman");
    EXPECT_EQ(d.runExe, "mame.exe");
    EXPECT_FALSE(d.plan);
    d = dispatch(23, 3, s, c, "", "");
    EXPECT_FALSE(d.plan);
}

TEST_F(DispatchTest, NoListNoLaunchAndRowsOutsideTheListReadEmpty)
{
    for (int path : { 0, -1, 28, 32767 }) {
        SCOPED_TRACE(path);
        const Dispatch d = dispatch(path, 1, s, c, "mame.exe", "pacman");
        EXPECT_FALSE(d.plan);
        EXPECT_EQ(d.runExe, "mame.exe");
        EXPECT_EQ(d.runRom, "pacman");
    }
    for (int row : { -5, 4001, 2147483647 }) {
        SCOPED_TRACE(row);
        const Dispatch d = dispatch(27, row, s, c, "", "");
        ASSERT_TRUE(d.plan);
        EXPECT_EQ(d.plan->commandLine, " ");
        EXPECT_EQ(d.plan->folder, "");
    }
}

} // namespace
} // namespace ombrel::launch
