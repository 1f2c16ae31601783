// The end of the program after the EXIT command: the desktop's display mode given back, the power-off,
// and a refused power-off told on the screen and on standard error until a key or ten seconds end it.
#include "CabinetFixture.h"

#include "runtime/controls/Label.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

namespace ombrel::test {
namespace {

// The muted goodbye: the end comes a second after the key.
constexpr int64_t kEndMs = 1000;

void setIni(TempHome& home, const std::string& from, const std::string& to)
{
    std::string text = home.read("ombrel.ini");
    const size_t at = text.find("\r\n" + from + "\r\n");
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at + 2, from.size(), to);
    home.write("ombrel.ini", text);
}

// The lines of the trace from the end of the goodbye on, without the sounds.
std::vector<std::string> endLines(CabinetFixture& fx)
{
    std::vector<std::string> lines;
    for (const std::string& line : fx.sinceMark())
        if (!line.starts_with("media ") && !line.starts_with("file ") && !line.starts_with("select "))
            lines.push_back(line);
    return lines;
}

TEST(ProgramEndTest, DisplayModePowerOffAndTheErrorBox)
{
    const std::string refusedCheck
        = "error ombrel.mShutDown error 8004062E: Can't enable shutdown: You do not "
          "have the privileges to shutdown this system. [Permission denied]";
    const std::string refusedOff = "error ombrel.mShutDown error 8004062B: ShutdownSystem failed: "
                                   "Input/output error";
    struct Case
    {
        const char* name;
        const char* resX;
        const char* resY;
        bool powerOff;
        int checkAnswer;
        int offAnswer;
        int systemError;
        std::vector<std::string> expected; // from the key to the end or the error box
    };
    // The fake desktop is 640 x 480; the settings keep 32 bits at 60 Hz for it, 16 bits at 75 Hz for
    // the front end.
    const std::string restore = "display restore 640x480 bits 32 freq 60";
    const std::vector<Case> cases {
        { "desktop's mode", "0", "0", false, 0, 0, 0, { "program end" } },
        { "changed mode is given back", "800", "600", false, 0, 0, 0, { restore, "program end" } },
        // Only the widths are compared, at start and at the end.
        { "same width, other height", "640", "400", false, 0, 0, 0, { "program end" } },
        { "power-off after the mode", "800", "600", true, 0, 0, 0,
            { restore, "power check", "power off", "program end" } },
        { "power-off not allowed", "0", "0", true, platform::kErrNoPrivilege, 0, EACCES,
            { "power check", refusedCheck, "form load ErrorBox", "form show ErrorBox" } },
        { "power-off refused", "0", "0", true, 0, platform::kErrShutdownFailed, EIO,
            { "power check", "power off", refusedOff, "form load ErrorBox", "form show ErrorBox" } },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        CabinetSetup setup;
        setup.muted = true;
        fx.write(setup);
        setIni(fx.home, "ResX=0", std::string("ResX=") + row.resX);
        setIni(fx.home, "ResY=0", std::string("ResY=") + row.resY);
        // The desktop's pair of lines comes first, then the front end's.
        setIni(fx.home, "Freq=0", "Freq=60");
        setIni(fx.home, "Bits=0", "Bits=32");
        setIni(fx.home, "Freq=0", "Freq=75");
        setIni(fx.home, "Bits=0", "Bits=16");
        if (row.powerOff)
            setIni(fx.home, "ShutdownOnExit=NO", "ShutdownOnExit=YES");
        fx.power.setCheckResult(row.checkAnswer);
        fx.power.setPowerOffResult(row.offAnswer);
        fx.power.setSystemError(row.systemError);
        fx.boot();

        fx.tap(vk::kEsc);
        fx.runFor(kEndMs - 1);
        fx.mark();
        ::testing::internal::CaptureStderr();
        fx.runFor(1);
        const std::string err = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(endLines(fx), row.expected);

        const bool refused = row.checkAnswer != 0 || row.offAnswer != 0;
        EXPECT_EQ(fx.loop.quitting(), !refused);
        if (!refused) {
            EXPECT_EQ(fx.loop.exitCode(), 0);
            EXPECT_EQ(err, "");
            continue;
        }
        // The error stands on a black screen over everything, and on standard error in one line.
        const std::string text = (row.checkAnswer != 0 ? refusedCheck : refusedOff).substr(6);
        EXPECT_EQ(err, "ombrel: " + text + "\n");
        ASSERT_TRUE(fx.active("ErrorBox"));
        auto& box = fx.forms().form("ErrorBox");
        auto* label = dynamic_cast<runtime::Label*>(box.find("lblError"));
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->caption(), text);
        EXPECT_EQ(box.backColor(), 0u);
        EXPECT_EQ(fx.forms().zOrder().back(), &box);
        EXPECT_FALSE(fx.main().timWfExit.enabled()) << "no game runs: the exit key is not watched";
        // A key ends the program at once, else ten seconds do.
        if (row.checkAnswer != 0) {
            fx.runFor(3000);
            fx.press(vk::kA);
        } else {
            fx.runFor(9999);
            EXPECT_FALSE(fx.loop.quitting());
            fx.runFor(1);
        }
        EXPECT_TRUE(fx.loop.quitting());
        EXPECT_EQ(fx.loop.exitCode(), 1);
        EXPECT_EQ(fx.trace.lines.back(), "program end");
    }
}

} // namespace
} // namespace ombrel::test
