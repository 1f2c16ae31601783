// Tests of starting programs for real: arguments, working folder, failures, the opener. The blocking
// wait is pinned by the end-to-end tests.
#include "platform/linux/SpawnProcesses.h"

#include "RuntimeFixture.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace ombrel::platform::linux {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

class SpawnProcessesTest : public ::testing::Test
{
protected:
    void script(const std::string& relative, const std::string& body)
    {
        const std::string path = home.write(relative, "#!/bin/sh\n" + body + "\n");
        fs::permissions(path, fs::perms::owner_all, fs::perm_options::add);
    }
    // What a program that nobody waits for writes; it writes to a temporary name and renames.
    std::string fileWrittenLater(const std::string& relative)
    {
        for (int i = 0; i < 1000 && !home.exists(relative); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return home.read(relative);
    }
    std::string canonical(const std::string& relative)
    {
        return fs::canonical(home.root() / relative).string();
    }

    test::TempHome home;
    test::RecordingTrace trace;
    SpawnProcesses processes { trace, home.path() };
};

// Command lines are written for Windows: the program is found without ".exe", nothing is expanded, and
// a relative working folder with backslashes is below the program's folder (empty: the folder itself).
TEST_F(SpawnProcessesTest, ArgumentsArriveAsSplitInTheWorkingFolder)
{
    script("emu/args", "{ pwd -P; for a in \"$@\"; do printf '[%s]\\n' \"$a\"; done; } > \"$0.out\"");
    fs::create_directories(home.root() / "work/sub");
    fs::create_directories(home.root() / "abs");
    const struct
    {
        std::string commandLine, workDir;
        std::string folder; // below the program's folder
        std::string args, traced;
    } rows[] = {
        { "emu\\args.exe one \"two  words\" \"\" it's $HOME;x C:\\dir\\ *.zip ~  ", "", ".",
            "[one]\n[two  words]\n[]\n[it's]\n[$HOME;x]\n[C:\\dir\\]\n[*.zip]\n[~]\n",
            "launch emu\\args.exe one \"two  words\" \"\" it's $HOME;x C:\\dir\\ *.zip ~   | in " },
        { "emu\\args", "work\\sub", "work/sub", "", "launch emu\\args | in work\\sub" },
        { home.path() + "emu/args", home.path() + "abs", "abs", "", "launch emu/args | in abs" },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.commandLine);
        trace.lines.clear();
        const int id = processes.start(row.commandLine, row.workDir);
        ASSERT_GT(id, 0);
        processes.waitForExit(id);
        EXPECT_EQ(home.read("emu/args.out"), canonical(row.folder) + "\n" + row.args);
        EXPECT_EQ(trace.lines, (Lines { row.traced, "process exit " + std::to_string(id) }));
    }
}

TEST_F(SpawnProcessesTest, FailedStartReportsOneLineAndGivesZero)
{
    script("ok", "exit 0");
    home.write("copied.exe", "MZ"); // a Windows program brought over: no execute bit
    home.write("garbage", "\x01\x02 not a program");
    fs::permissions(home.root() / "garbage", fs::perms::owner_all, fs::perm_options::add);
    const struct
    {
        const char* name;
        std::string commandLine, workDir, reason;
    } rows[] = {
        { "missingProgram", "nothere.exe -x", "", "program not found" },
        { "notExecutable", "copied.exe", "", "program not found" },
        { "folderIsNoProgram", "work", "", "program not found" },
        { "missingFolder", "ok", "nowhere\\", "no folder " + home.path() + "nowhere/" },
        { "notRunnable", "garbage", "", "Exec format error" },
        { "nothing", "  ", "", "nothing to run" },
    };
    fs::create_directories(home.root() / "work");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        trace.lines.clear();
        ::testing::internal::CaptureStderr();
        const int id = processes.start(row.commandLine, row.workDir);
        const std::string error = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(id, 0);
        EXPECT_EQ(error, "ombrel: cannot start " + row.commandLine + ": " + row.reason + "\n");
        EXPECT_EQ(trace.lines, (Lines { "launch " + row.commandLine + " | in " + row.workDir + " failed" }));
        EXPECT_FALSE(processes.running(id));
        processes.waitForExit(id); // nothing started: the game "ends" at once
    }
}

TEST_F(SpawnProcessesTest, ShellVerbOpensTheFileInTheFolderOrSaysTheOpenerIsMissing)
{
    script("opener", "printf '%s\\n' \"$1\" \"$(pwd -P)\" > \"$0.tmp\" && mv \"$0.tmp\" \"$0.out\"");
    home.write("vp/tables/x.vpt", "");
    SpawnProcesses opening(trace, home.path(), "opener");
    EXPECT_TRUE(opening.shellExecute("Play", "vp\\tables\\x.vpt", "vp\\tables\\"));
    EXPECT_EQ(
        fileWrittenLater("opener.out"), home.path() + "vp/tables/x.vpt\n" + canonical("vp/tables") + "\n");
    EXPECT_EQ(trace.lines, (Lines { "shell Play vp\\tables\\x.vpt | in vp\\tables\\" }));

    SpawnProcesses noOpener(trace, home.path(), "no-such-opener");
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(noOpener.shellExecute("Play", "x.vpt", ""));
    EXPECT_EQ(
        ::testing::internal::GetCapturedStderr(), "ombrel: cannot open x.vpt: no-such-opener not found\n");
}

} // namespace
} // namespace ombrel::platform::linux
