// Tests of the replay driver where the scenarios do not reach: screenshots and dumps at a moment, the end
// of a run without "end", a single failing write; seen through a small form that logs what reaches it.
#include "replay/ReplayDriver.h"

#include "TempHome.h"
#include "core/FailureLog.h"
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
namespace fake = platform::fake;

// Logs keys with their time. Enter starts a game and waits for it, as a blocking launch does; the
// timer turns the form blue at its first tick.
class ProbeForm final : public runtime::Form {
public:
    ProbeForm(runtime::FormStack& stack, fake::FakeProcesses& processes, std::vector<std::string>& log)
        : Form(stack, "Probe")
        , m_processes(processes)
        , m_log(log)
    {
        addTimer("timTick", 300, true, [this] { setBackColor(0xFF0000); });
    }

    void Form_KeyDown(int keyCode, int) override
    {
        note("key " + std::to_string(keyCode));
        if (keyCode == 13) {
            m_processes.waitForExit(m_processes.start("game", "/tmp"));
            note("back");
        }
    }

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
        driver->setDumpSource([this] { return dumpLines; });
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
    std::vector<std::string> dumpLines;
};

// Time, order, input, focus, dumps, faults and the wait for a game all show in the scenario traces;
// these are the rules the scenarios do not reach.
TEST_F(ReplayDriverTest, ScreenshotSeesTheTimersOfItsMomentAndDumpLinesStayWhole)
{
    dumpLines = { "caption \"a\r\nb\"", "", "end" };
    run("at 300 screenshot shot.png\n"
        "at 300 dump\n"
        "at 300 end\n");
    ASSERT_EQ(renderer.screenshots().size(), 1u);
    ASSERT_FALSE(renderer.screenshots()[0].frame.empty());
    EXPECT_EQ(renderer.screenshots()[0].frame.front().colour, 0xFF0000u); // painted after the tick at 300
    EXPECT_THAT(traceLines(), ElementsAre("300 screenshot shot.png", "300 dump caption \"a\\r\\nb\"", "300 dump",
                                  "300 dump end", "300 end"));
}

TEST_F(ReplayDriverTest, WithoutEndTheRunStopsAMinuteAfterTheLastLine)
{
    // The probe's timer never stops, so "nothing pending" never comes.
    run("at 100 key down 40\n");
    EXPECT_EQ(traceLines().back(), std::to_string(100 + ReplayDriver::kIdleLimitMs) + " end");
}

TEST_F(ReplayDriverTest, GameThatNeverEndsEndsTheRun)
{
    run("at 100 key down 13\n"
        "at 200 dump\n");
    EXPECT_THAT(log, ElementsAre("100 key 13", "200 back"));
    EXPECT_THAT(traceLines(), ElementsAre("100 launch game | in /tmp", "200 dump", "200 end"));
}

TEST_F(ReplayDriverTest, AWriteFaultFailsOneWriteOfThatFileOnly)
{
    home.write("kept.cfg", "old");
    run("at 250 write fail kept.cfg\n"
        "at 400 end\n");
    EXPECT_EQ(files.write(home.path() + "other.cfg", "new"), "");
    EXPECT_NE(files.write(home.path() + "kept.cfg", "new"), "");
    EXPECT_EQ(home.read("kept.cfg"), "old");
    EXPECT_EQ(files.write(home.path() + "kept.cfg", "new"), "");
    EXPECT_EQ(home.read("kept.cfg"), "new");
}

} // namespace
} // namespace ombrel::replay
