// The start of the program and what missing or broken files lead to: the settings file (the one
// failure that stops the start), the saved state, the intro film, the failure log and the leftovers of
// a killed write.
#include "CabinetFixture.h"

#include "core/AtomicFile.h"
#include "runtime/controls/Label.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace ombrel::test {
namespace {

namespace fs = std::filesystem;

// The message stands until a key or a click on it ends the program, else four seconds do; nothing of
// the cabinet starts on half-read settings. (A click on the backdrop and a joystick button are the
// scenario broken-settings.)
TEST(BootTest, BrokenSettingsStopTheStartWithTheFirstProblem)
{
    // Each ends its own way: by the time, by a key, by a click on the message.
    const std::tuple<std::function<void(IniSample&)>, const char*, int> rows[] = {
        { nullptr, "ombrel.ini: cannot open", 0 },
        { [](IniSample& ini) { ini.truncate(158); },
            "ombrel.ini line 159: the file ends where EmuFolder= of path 20", 1 },
        { [](IniSample& ini) { ini.insertBefore(IniSample::blockIndex(3, 2), "* path 3"); },
            "ombrel.ini line 18: a comment stands where Exec= (emuExe(3))", 2 },
    };
    for (const auto& [edit, message, input] : rows) {
        SCOPED_TRACE(message);
        CabinetFixture fx;
        fx.write({ .ini = edit });
        if (!edit)
            fs::remove(fx.home.root() / "ombrel.ini");
        ::testing::internal::CaptureStderr();
        fx.start();
        fx.runFor(1000);
        const std::string err = ::testing::internal::GetCapturedStderr();
        EXPECT_NE(err.find(message), std::string::npos) << err;
        EXPECT_NE(err.find("ombrel --check"), std::string::npos) << err;
        EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << "one line on standard error";
        auto* label = dynamic_cast<runtime::Label*>(fx.forms().form("blanker").find("lblError"));
        ASSERT_NE(label, nullptr);
        EXPECT_TRUE(fx.active("blanker"));
        EXPECT_NE(label->caption().find(message), std::string::npos) << label->caption();
        if (input == 1)
            fx.press(vk::kEnter);
        else if (input == 2)
            fx.click("blanker");
        else {
            fx.runFor(3999);
            EXPECT_FALSE(fx.loop.quitting());
            fx.runFor(1);
        }
        EXPECT_TRUE(fx.loop.quitting());
        EXPECT_EQ(fx.loop.exitCode(), 1);
        EXPECT_EQ(fx.trace.lines.back(), "program end");
        for (const std::string& line : fx.trace.lines)
            EXPECT_EQ(line.find("Main"), std::string::npos) << line;
        EXPECT_EQ(fx.countSinceMark("media mpIntro play"), 0);
    }
}

TEST(BootTest, AKeyEndsTheFilmAndWithoutOneTheBrowserComesAtOnceOnItsLastGame)
{
    CabinetFixture fx;
    fx.write({});
    fx.home.write("intro.mpeg", "film"); // the fakes play any file for a second
    fx.start();
    fx.runFor(300);
    EXPECT_FALSE(fx.showing("Main"));
    fx.press(32);
    fx.runFor(20);
    EXPECT_TRUE(fx.showing("Main"));
    EXPECT_EQ(fx.countSinceMark("media mpIntro stop"), 1);
    EXPECT_EQ(fx.countSinceMark("media mpIntro end"), 0);

    CabinetFixture bare;
    bare.write({ .listSizes = { 3 } });
    // lastIndex 3 is past the list's end, which the list box refuses: the first game stays selected.
    bare.home.write("ombrel.cfg", "\"\\Skin\\\"\r\n300\r\n0\r\n0\r\n1\r\n#FALSE#\r\n3\r\n1\r\n0\r\n");
    bare.boot();
    EXPECT_TRUE(bare.active("Main"));
    EXPECT_EQ(bare.curPath(), 1);
    EXPECT_EQ(bare.listIndex(), 0);
}

// Without saved state no list is shown until the player moves.
TEST(BootTest, FailuresPassedOverAreLoggedOnceWithTheirFile)
{
    CabinetFixture cab;
    cab.write({ .keyFile = false });
    fs::remove(cab.home.root() / "l 2.lst");
    fs::remove(cab.home.root() / "ombrel.cfg");
    cab.home.write("l 2.lst/not a list", "");
    cab.boot();
    EXPECT_EQ(cab.curPath(), 0);
    EXPECT_EQ(cab.main().c.List1.listCount(), 0);
    cab.main().nav.gNextPath();
    EXPECT_EQ(cab.main().c.List1.listCount(), 100);
    cab.main().nav.loadLists(); // the same failures again, from the same places
    const std::string log = cab.home.read("ombrel.log");
    const std::string keyFile = "omkeys.cfg: cannot open " + cab.home.path() + "omkeys.cfg (";
    for (const std::string& cause : { keyFile, std::string("l 2.lst: cannot be created") }) {
        size_t at = log.find(cause);
        EXPECT_NE(at, std::string::npos) << log;
        EXPECT_EQ(log.find(cause, at + 1), std::string::npos) << log;
    }
    for (const std::string& line : cab.trace.lines)
        EXPECT_FALSE(line.starts_with("file write ombrel.log")) << "the log is no effect of the trace";
}

TEST(BootTest, LeftoversOfAKilledWriteGoBeforeTheStartReadsAnything)
{
    CabinetFixture fx;
    fx.write({});
    const auto left = [](const std::string& name) { return core::temporaryName(name, INT_MAX, 1); };
    for (const char* name : { "ombrel.cfg", "omkeys.cfg", "l 1.lst", "l26.lst", "gamelist.lst" })
        fx.home.write(left(name), "half");
    fx.home.write(left("l 2.lst") + "/inside", "a folder under that name cannot be removed");
    fx.boot();
    const std::string err = fx.failureEcho.str(); // standard error, by way of the failure log
    const std::vector<std::string> first(fx.trace.lines.begin(), fx.trace.lines.begin() + 6);
    EXPECT_EQ(first,
        (std::vector<std::string> { "file remove " + left("l 1.lst"), "file remove " + left("l26.lst"),
            "file remove " + left("ombrel.cfg"), "file remove " + left("omkeys.cfg"),
            "file remove " + left("l 2.lst") + " failed", "form load blanker" }));
    EXPECT_NE(err.find("cannot remove the left-over " + fx.home.path() + left("l 2.lst")), std::string::npos)
        << err;
    EXPECT_TRUE(fx.showing("Main")) << "what cannot be removed does not stop the start";
}

} // namespace
} // namespace ombrel::test
