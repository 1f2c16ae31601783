// Tests of the replay driver: virtual time, the order of input and timers, screenshots, dumps, the end
// of a run and the wait for a game, seen through a small form that logs what reaches it.
#include "replay/ReplayDriver.h"

#include "TempHome.h"
#include "core/FailureLog.h"
#include "platform/Power.h"
#include "platform/fake/FakeFonts.h"
#include "platform/fake/FakeImages.h"
#include "platform/fake/FakeRenderer.h"
#include "replay/TraceWriter.h"
#include "runtime/FormStack.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <sstream>

namespace ombrel::replay {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;
using ::testing::UnorderedElementsAre;
namespace fake = platform::fake;

// Logs keys, focus and ticks with their time. Enter starts a game and waits for it, as a blocking
// launch does; the timer turns the form blue at its first tick.
class ProbeForm final : public runtime::Form {
public:
    ProbeForm(runtime::FormStack& stack, fake::FakeProcesses& processes, std::vector<std::string>& log)
        : Form(stack, "Probe")
        , m_processes(processes)
        , m_log(log)
    {
        addTimer("timTick", 300, true, [this] {
            note("tick");
            setBackColor(0xFF0000);
        });
    }

    void Form_KeyDown(int keyCode, int) override
    {
        note("key " + std::to_string(keyCode));
        if (keyCode == 13) {
            m_processes.waitForExit(m_processes.start("game", "/tmp"));
            note("back");
        }
    }
    void Form_LostFocus() override { note("lost"); }
    void Form_GotFocus() override { note("got"); }

private:
    void note(const std::string& what) { m_log.push_back(std::to_string(loop().now()) + " " + what); }

    fake::FakeProcesses& m_processes;
    std::vector<std::string>& m_log;
};

class ReplayDriverTest : public ::testing::Test {
protected:
    // Runs the script to its end over the probe form; returns the loop's exit code.
    int run(std::string_view text)
    {
        std::string error;
        auto script = ReplayScript::parse(text, "t.replay", error);
        EXPECT_TRUE(script) << error;
        if (!script)
            return -1;
        driver = std::make_unique<ReplayDriver>(std::move(*script), loop, clock, trace,
            ReplayDevices { keyState, joystick, cursor, processes, power, files, renderer });
        driver->setFrameSource([this] { return forms.frame(); });
        driver->setDumpSource([this] { return dumpText; });
        loop.setInputHandler([this](const runtime::InputEvent& event) { forms.dispatch(event); });
        loop.setPaintHandler([this] { forms.paintIfChanged(); });
        forms.define("Probe", [this](runtime::FormStack& stack) {
            return std::make_unique<ProbeForm>(stack, processes, log);
        });
        forms.form("Probe").show();
        return loop.run();
    }

    std::vector<std::string> traceLines() const
    {
        std::vector<std::string> lines;
        std::istringstream in(traceText.str());
        for (std::string line; std::getline(in, line);) {
            if (line.find(" form ") == std::string::npos) // the runtime's own lines are not under test
                lines.push_back(line);
        }
        return lines;
    }

    runtime::VirtualClock clock;
    std::ostringstream traceText;
    TraceWriter trace { clock, traceText };
    runtime::EventLoop loop { clock };
    fake::FakeKeyState keyState;
    fake::FakeJoystick joystick;
    fake::FakeCursor cursor { trace };
    fake::FakeProcesses processes { trace };
    fake::FakePower power { trace };
    test::TempHome home;
    ReplayFiles files { home.path() };
    fake::FakeRenderer renderer;
    fake::FakeFonts fonts;
    fake::FakeImages images;
    core::FailureLog failures { "", std::cerr };
    runtime::FormStack forms { runtime::FormServices {
        loop, trace, fonts, images, files, renderer, "", failures } };
    std::unique_ptr<ReplayDriver> driver;
    std::vector<std::string> log;
    std::string dumpText;
};

TEST_F(ReplayDriverTest, TimeJumpsBetweenTimersAndScriptedInput)
{
    EXPECT_EQ(run("at 450 key down 40\n"
                  "at 700 end\n"),
              0);
    EXPECT_THAT(log, ElementsAre("0 got", "300 tick", "450 key 40", "600 tick"));
    EXPECT_THAT(traceLines(), ElementsAre("700 end"));
}

TEST_F(ReplayDriverTest, InputOfAMomentGoesBeforeItsTimersAndKeepsScriptOrder)
{
    run("at 600 key down 38\n"
        "at 600 key down 40\n"
        "at 600 end\n");
    EXPECT_THAT(log, ElementsAre("0 got", "300 tick", "600 key 38", "600 key 40", "600 tick"));
}

TEST_F(ReplayDriverTest, KeysAndStickChangeTheDeviceState)
{
    run("at 10 key down 37\n"
        "at 20 key down 38\n"
        "at 30 key up 37\n"
        "at 40 joy x 0 y 65535 buttons 3\n"
        "at 50 mousemove 12 34\n"
        "at 60 end\n");
    EXPECT_FALSE(keyState.isDown(37));
    EXPECT_TRUE(keyState.isDown(38));
    platform::JoyInfo info;
    ASSERT_TRUE(joystick.read(info));
    EXPECT_EQ(info.x, 0u);
    EXPECT_EQ(info.y, 65535u);
    EXPECT_EQ(info.buttons, 3u);
    EXPECT_EQ(cursor.position().x, 12);
    EXPECT_EQ(cursor.position().y, 34);
}

TEST_F(ReplayDriverTest, ScreenshotSeesTheTimersOfItsMoment)
{
    run("at 300 screenshot shot.png\n"
        "at 300 end\n");
    ASSERT_EQ(renderer.screenshots().size(), 1u);
    const auto& shot = renderer.screenshots()[0];
    EXPECT_EQ(shot.path, "shot.png");
    ASSERT_FALSE(shot.frame.empty());
    EXPECT_EQ(shot.frame.front().colour, 0xFF0000u); // painted after the tick at 300
    EXPECT_THAT(traceLines(), ElementsAre("300 screenshot shot.png", "300 end"));
}

TEST_F(ReplayDriverTest, DumpWritesOneTraceLinePerLine)
{
    dumpText = "forms: Probe\ncaption \"a\"\r\n\nend of dump\n";
    run("at 5 dump\n");
    EXPECT_THAT(traceLines(), IsSupersetOf({ "5 dump forms: Probe", "5 dump caption \"a\"", "5 dump",
                                             "5 dump end of dump" }));
}

TEST_F(ReplayDriverTest, WithoutEndTheRunStopsAMinuteAfterTheLastLine)
{
    // The probe's timer never stops, so "nothing pending" never comes.
    run("at 100 key down 40\n");
    EXPECT_EQ(traceLines().back(), std::to_string(100 + ReplayDriver::kIdleLimitMs) + " end");
    EXPECT_EQ(log.back(), "60000 tick");
}

TEST_F(ReplayDriverTest, WaitForAGameRunsNothingUntilTheScriptEndsIt)
{
    run("at 100 key down 13\n"
        "at 200 key down 40\n" // the game has the keyboard
        "at 250 joy x 1 y 2 buttons 1\n"
        "at 300 focus lost\n"
        "at 400 dump\n"
        "at 1000 focus gained\n"
        "at 1000 process exit\n"
        "at 1100 end\n");
    // No tick between 100 and 1000; after the wait one late tick and the focus changes that queued up.
    ASSERT_EQ(log.size(), 6u);
    EXPECT_THAT(std::vector(log.begin(), log.begin() + 3), ElementsAre("0 got", "100 key 13", "1000 back"));
    EXPECT_THAT(std::vector(log.begin() + 3, log.end()), UnorderedElementsAre("1000 lost", "1000 got", "1000 tick"));
    EXPECT_TRUE(keyState.isDown(40));
    platform::JoyInfo info;
    EXPECT_TRUE(joystick.read(info));
    EXPECT_THAT(traceLines(), ElementsAre("100 launch game | in /tmp", "400 dump", "1000 process exit 1",
                                          "1100 end"));
}

TEST_F(ReplayDriverTest, GameThatNeverEndsEndsTheRun)
{
    run("at 100 key down 13\n"
        "at 200 dump\n");
    EXPECT_THAT(log, ElementsAre("0 got", "100 key 13", "200 back"));
    EXPECT_THAT(traceLines(), ElementsAre("100 launch game | in /tmp", "200 dump", "200 end"));
    EXPECT_TRUE(processes.running(1));
}

TEST_F(ReplayDriverTest, FaultsAreArmedAtTheirMomentAlsoDuringAWait)
{
    home.write("kept.cfg", "old");
    run("at 50 launch fail\n"
        "at 100 key down 13\n" // no program, so no wait
        "at 200 key down 13\n" // the fault was for one start only
        "at 250 write fail kept.cfg\n"
        "at 260 power refuse 8004062B errno 5\n"
        "at 270 power refuse 8004062D\n"
        "at 300 process exit\n"
        "at 400 end\n");
    EXPECT_THAT(std::vector(log.begin(), log.begin() + 5),
        ElementsAre("0 got", "100 key 13", "100 back", "200 key 13", "300 back"));
    EXPECT_THAT(traceLines(), ElementsAre("100 launch game | in /tmp failed", "200 launch game | in /tmp",
                                  "300 process exit 1", "400 end"));

    // One write of that file fails and leaves it; other files and the next write go to the disk.
    EXPECT_EQ(files.write(home.path() + "other.cfg", "new"), "");
    EXPECT_NE(files.write(home.path() + "kept.cfg", "new"), "");
    EXPECT_EQ(home.read("kept.cfg"), "old");
    EXPECT_EQ(files.write(home.path() + "kept.cfg", "new"), "");
    EXPECT_EQ(home.read("kept.cfg"), "new");

    // The power-off's own number refuses the power-off, any other the check before it.
    EXPECT_EQ(power.checkPowerOffAllowed(), platform::kErrNoProcess);
    EXPECT_EQ(power.powerOff(), platform::kErrShutdownFailed);
    EXPECT_EQ(power.lastSystemError(), 0);
}

TEST_F(ReplayDriverTest, ProcessExitWithoutAWaitEndsTheLatestGame)
{
    const int id = processes.start("timed", "/tmp");
    run("at 50 process exit\n"
        "at 60 process exit\n" // nothing runs any more: no line
        "at 70 end\n");
    EXPECT_FALSE(processes.running(id));
    EXPECT_THAT(traceLines(), ElementsAre("0 launch timed | in /tmp", "50 process exit 1", "70 end"));
}

} // namespace
} // namespace ombrel::replay
