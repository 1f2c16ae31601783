// The end of the program after the EXIT command: the desktop's display mode given back, the power-off,
// and a refused power-off told on the screen and on standard error until a key ends it. (A refusal
// that ten seconds end is the scenario power-off-refused.)
#include "CabinetFixture.h"

#include "runtime/controls/Label.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <tuple>
#include <vector>

namespace ombrel::test {
namespace {

TEST(ProgramEndTest, DisplayModePowerOffAndTheErrorBox)
{
    const std::string refused = "ombrel.mShutDown error 8004062E: Can't enable shutdown: You do not have "
                                "the privileges to shutdown this system. [Permission denied]";
    // ResX=, ResY=, ShutdownOnExit=, the permission's answer, and the trace from the end of the goodbye on
    // without sounds and files. The fake desktop is 640 x 480; the settings keep 32 bits at 60 Hz for
    // it, 16 at 75 for the front end. Only the widths are compared, at start and at the end.
    const std::tuple<const char*, const char*, bool, int, std::vector<std::string>> cases[] = {
        { "640", "400", false, 0, { "form unload Main", "program end" } },
        { "800", "600", true, 0,
            { "form unload Main", "display restore 640x480 bits 32 freq 60", "power check", "power off",
                "program end" } },
        { "0", "0", true, platform::kErrNoPrivilege,
            { "form unload Main", "power check", "error " + refused, "form load ErrorBox", "form show ErrorBox" } },
    };
    for (const auto& [resX, resY, powerOff, checkAnswer, expected] : cases) {
        SCOPED_TRACE(expected.size());
        CabinetFixture fx;
        fx.write({ .muted = true, .ini = [&](IniSample& ini) {
                      ini.setTail(16, resX).setTail(17, resY).setTail(22, powerOff ? "YES" : "NO");
                      ini.setTail(18, "60").setTail(19, "32").setTail(20, "75").setTail(21, "16");
                  } });
        fx.power.setCheckResult(checkAnswer);
        fx.power.setSystemError(EACCES);
        fx.boot();

        fx.tap(vk::kEsc);
        fx.runFor(999); // the muted goodbye ends a second after the key
        fx.mark();
        ::testing::internal::CaptureStderr();
        fx.runFor(1);
        const std::string err = ::testing::internal::GetCapturedStderr();
        std::vector<std::string> lines;
        for (const std::string& line : fx.sinceMark())
            if (!line.starts_with("media ") && !line.starts_with("file ") && !line.starts_with("select "))
                lines.push_back(line);
        EXPECT_EQ(lines, expected);
        EXPECT_EQ(fx.loop.quitting(), checkAnswer == 0);
        if (checkAnswer == 0) {
            EXPECT_EQ(fx.loop.exitCode(), 0);
            EXPECT_EQ(err, "");
            continue;
        }
        // The error stands on a black screen over everything, and on standard error in one line.
        EXPECT_EQ(err, "ombrel: " + refused + "\n");
        auto& box = fx.forms().form("ErrorBox");
        ASSERT_TRUE(fx.active("ErrorBox"));
        EXPECT_EQ(dynamic_cast<runtime::Label&>(*box.find("lblError")).caption(), refused);
        EXPECT_EQ(fx.forms().zOrder().back(), &box);
        EXPECT_EQ(fx.forms().existing("Main"), nullptr) << "the browser was taken down before the power-off";
        fx.runFor(3000);
        fx.press(vk::kA);
        EXPECT_TRUE(fx.loop.quitting());
        EXPECT_EQ(fx.loop.exitCode(), 1);
    }
}

} // namespace
} // namespace ombrel::test
