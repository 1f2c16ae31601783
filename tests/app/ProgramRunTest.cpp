// ProgramRunTest: runs the built program with a command line and an environment, and checks its exit
// code and what it wrote on standard output and standard error.
#include "TempHome.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>

namespace ombrel::test {
namespace {

namespace fs = std::filesystem;

struct ProgramRun
{
    const char* name;
    const char* env; // words put in front of the program ("env -u X Y=z"); "@/" is the run's folder
    const char* args; // "@/" is the run's folder, which holds a copy of the demo cabinet in demo/
    int exitCode;
    const char* out; // found in standard output; "": nothing is written there
    std::string err; // what standard error begins with; "": nothing is written there
    bool errWhole = false; // err is the whole of standard error
    const char* script = ""; // written to @/run.replay
};

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

void PrintTo(const ProgramRun& run, std::ostream* out)
{
    *out << run.name;
}

class ProgramRunTest : public ::testing::TestWithParam<ProgramRun>
{
};

TEST_P(ProgramRunTest, ExitsWithItsCodeAndSaysWhy)
{
    const ProgramRun& row = GetParam();
    TempHome dir;
    // The demo cabinet as scripts/run-demo.sh makes it: a copy, with the built demo emulator in emu/.
    fs::copy(fs::path(sourceDir()) / "demo", dir.root() / "demo", fs::copy_options::recursive);
    dir.write("run.replay", row.script);
    ASSERT_TRUE(std::getenv("DEMOEMU"));
    fs::copy_file(std::getenv("DEMOEMU"), dir.root() / "demo/emu/demoemu");
    if (std::string(row.args).find("--check") != std::string::npos && !fs::exists("/usr/games/mame"))
        GTEST_SKIP() << "the demo's fifth list runs Debian's MAME, which is not installed";

    // A program that runs on instead of stopping is ended, and the run fails on its exit code.
    const std::string command = replaced(
        std::string(row.env) + " timeout 10 '" + OMBREL_BINARY + "' " + row.args + " >'@/out' 2>'@/err'",
        "@/", dir.path());
    const int status = std::system(command.c_str());
    EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, row.exitCode) << command;
    const std::string out = dir.read("out"), err = dir.read("err");
    EXPECT_TRUE(*row.out ? out.find(row.out) != std::string::npos : out.empty()) << out;
    EXPECT_TRUE(row.errWhole ? err == row.err : err.starts_with(row.err) && (!row.err.empty() || err.empty()))
        << err;
}

// No display: SDL fell back on a driver that shows nothing, or was told to use one.
std::string noDisplay(const std::string& driver)
{
    return "ombrel: no display to show the cabinet on (SDL video driver \"" + driver
        + "\"); start it in a desktop session, or run it with --replay\n";
}

const std::string kUsageAfter = "\nusage: ombrel";

INSTANTIATE_TEST_SUITE_P(Rows, ProgramRunTest,
    ::testing::Values(ProgramRun { "help", "", "--help", 0, "usage: ombrel [--home DIR]", "" },
        ProgramRun { "version", "", "--version", 0, "ombrel " OMBREL_VERSION "\n", "" },
        ProgramRun {
            "unknownOption", "", "--home @/demo --foo", 2, "", "ombrel: unknown option --foo" + kUsageAfter },
        ProgramRun { "missingValue", "", "--windowed --replay", 2, "",
            "ombrel: --replay needs a value" + kUsageAfter },
        ProgramRun { "emptyValue", "", "--home ''", 2, "", "ombrel: --home needs a value" + kUsageAfter },
        // The Wayland client library complains on standard error when it has no runtime folder.
        ProgramRun { "noDisplay", "env -u DISPLAY -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER XDG_RUNTIME_DIR=@/",
            "--home @/demo", 1, "", noDisplay("offscreen"), true },
        ProgramRun { "invisibleDriver", "env SDL_VIDEODRIVER=dummy", "--home @/demo", 1, "",
            noDisplay("dummy"), true },
        ProgramRun { "demoCheck", "", "--check --home @/demo", 0, "\nno problems found\nskin ", "" },
        // The skin follows, each value with its line: line 19 gives the logo's height before its width.
        ProgramRun { "demoCheckSkin", "", "--check --home @/demo", 0,
            "\nskin.ini line 19: xlogo.Height = 480\nskin.ini line 19: xlogo.Width = 1200\n", "" },
        // The replay's screen is the desktop the program finds.
        ProgramRun { "screen", "", "--home @/demo --replay @/run.replay --screen 800x600 --trace -", 0,
            "\n1000 dump state deskW 800\n1000 dump state deskH 600\n", "", false, "at 1000 dump\nat 1000 end\n" },
        ProgramRun { "screenTooSmall", "", "--home @/demo --replay @/run.replay --screen 800x15", 2, "",
            "ombrel: --screen 800x15: expected WIDTHxHEIGHT, each 16 to 8192 pixels" + kUsageAfter },
        ProgramRun { "decodersTooMany", "", "--home @/demo --decoders 17", 2, "",
            "ombrel: --decoders 17: expected a number from 0 to 16" + kUsageAfter },
        ProgramRun { "decodersNotANumber", "", "--home @/demo --decoders -1", 2, "",
            "ombrel: --decoders -1: expected a number from 0 to 16" + kUsageAfter },
        ProgramRun { "screenMalformed", "", "--home @/demo --replay @/run.replay --screen 800x600x2", 2, "",
            "ombrel: --screen 800x600x2: expected WIDTHxHEIGHT" }),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace ombrel::test
