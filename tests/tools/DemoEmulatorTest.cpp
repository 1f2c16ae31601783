// Tests of the demo emulator: its command line and game list, and its log from real runs. Its key codes
// are pinned by the end-to-end tests, which read them from its log.
#include "DemoEmulator.h"
#include "TempHome.h"
#include "TraceDiff.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace ombrel::demoemu {
namespace {

TEST(DemoEmulatorOptions, GameIsFirstPlainWordAndSecondsValueIsNeverTheGame)
{
    const struct
    {
        std::vector<std::string> args;
        std::string game;
        std::optional<std::uint64_t> runMs;
        bool fullscreen;
    } rows[] = {
        { { "pacman", "-fullscreen" }, "pacman", std::nullopt, true },
        { { "-fullscreen", "-seconds", "5", "galaga", "pacman", "-window" }, "galaga", 5000, false },
        { { "-seconds", "soon", "pacman" }, "pacman", std::nullopt, false },
        { { "-seconds", "0.25" }, "", 250, false },
        { { "-seconds", "1e3" }, "", std::nullopt, false },
        { { "-seconds", "99999999" }, "", 86400000, false },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.args));
        const Options options = parseOptions(row.args);
        EXPECT_EQ(options.game, row.game);
        EXPECT_EQ(options.runMs, row.runMs);
        EXPECT_EQ(options.fullscreen, row.fullscreen);
    }
}

TEST(DemoEmulatorMenu, MovesRoundBothEndsAndFreezesOnceStarted)
{
    GameMenu menu;
    EXPECT_EQ(menu.press(38), GameMenu::Outcome::Stay); // Up from the top goes to the bottom
    EXPECT_EQ(menu.row(), GameMenu::kRows - 1);
    menu.press(40); // and Down from there back to the top
    EXPECT_EQ(menu.row(), 0);
    menu.press(9);
    menu.press(40);
    menu.press(65); // a key the list does not use
    EXPECT_EQ(menu.row(), 2);

    EXPECT_EQ(menu.press(13), GameMenu::Outcome::Started);
    EXPECT_EQ(menu.current(), GameMenu::kGames[2]);
    menu.press(40);
    EXPECT_EQ(menu.press(13), GameMenu::Outcome::Stay);
    EXPECT_EQ(menu.row(), 2);
    EXPECT_EQ(menu.press(27), GameMenu::Outcome::Quit);
}

// Runs the built program in a folder, with DEMOEMU_LOG set to logPath unless it is empty; returns its
// exit status (a crash shows as 128 and the signal's number).
int runDemoemu(const std::vector<std::string>& args, const std::string& folder, const std::string& logPath)
{
    const char* program = std::getenv("DEMOEMU");
    if (!program || !*program) {
        ADD_FAILURE() << "DEMOEMU does not name the built demo emulator";
        return -1;
    }
    std::string command = "cd '" + folder + "' && "
        + (logPath.empty() ? "env -u DEMOEMU_LOG" : "DEMOEMU_LOG='" + logPath + "'") + " '" + program + "'";
    for (const std::string& arg : args)
        command += " '" + arg + "'";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The end-to-end tests read the log of a run with DEMOEMU_LOG; without it, each run adds to demoemu.log
// in its working folder. Headless without an end, it refuses to start.
TEST(DemoEmulatorRun, LogsEachRunInItsFolderAndRefusesAnEndlessHeadlessRun)
{
    test::TempHome home;
    home.write("emu/.keep", "");
    const std::string folder = home.path() + "emu";
    ASSERT_EQ(runDemoemu({ "-headless", "-seconds", "0", "-test" }, folder, ""), 0);
    ASSERT_EQ(runDemoemu({ "-headless", "-seconds", "0", "galaga", "-window" }, folder, ""), 0);
    EXPECT_EQ(test::TraceDiff::readLines(folder + "/demoemu.log"),
        (std::vector<std::string> { "start", "cwd " + std::filesystem::canonical(folder).string(),
            "args [-headless] [-seconds] [0] [-test]", "no game", "exit", "start",
            "cwd " + std::filesystem::canonical(folder).string(),
            "args [-headless] [-seconds] [0] [galaga] [-window]", "game galaga", "exit" }));
    for (const std::vector<std::string>& args : { std::vector<std::string> { "-headless", "pacman" },
             { "-headless", "-seconds", "-1" }, { "pacman", "-headless", "-seconds" } })
        EXPECT_EQ(runDemoemu(args, home.path(), home.path() + "emu.log"), 2)
            << ::testing::PrintToString(args);
}

} // namespace
} // namespace ombrel::demoemu
