// The timer rules and the order of the event loop, on a virtual clock.
#include "RuntimeFixture.h"

#include "runtime/Timer.h"

#include <gtest/gtest.h>

using namespace ombrel;
using runtime::Timer;

namespace {

class TimerTest : public ::testing::Test {
protected:
    test::RuntimeFixture fx;
};

TEST_F(TimerTest, EnablingStartsTheCountFromNow)
{
    std::vector<int64_t> ticks;
    Timer timer(fx.loop, "t", 100, false, [&] { ticks.push_back(fx.clock.nowMs()); });
    fx.runFor(250);
    timer.setEnabled(true);
    fx.runFor(250);
    EXPECT_EQ(ticks, (std::vector<int64_t> { 350, 450 }));
}

TEST_F(TimerTest, EnablingAnEnabledTimerChangesNothing)
{
    std::vector<int64_t> ticks;
    Timer timer(fx.loop, "t", 100, true, [&] { ticks.push_back(fx.clock.nowMs()); });
    fx.runFor(60);
    timer.setEnabled(true);
    fx.runFor(60);
    EXPECT_EQ(ticks, (std::vector<int64_t> { 100 }));
}

TEST_F(TimerTest, SettingTheIntervalRestartsTheCount)
{
    std::vector<int64_t> ticks;
    Timer timer(fx.loop, "t", 100, true, [&] { ticks.push_back(fx.clock.nowMs()); });
    fx.runFor(80);
    timer.setInterval(100); // same value: still a restart
    fx.runFor(150);
    EXPECT_EQ(ticks, (std::vector<int64_t> { 180 }));
}

TEST_F(TimerTest, IntervalZeroGivesNoTicks)
{
    int ticks = 0;
    Timer timer(fx.loop, "t", 0, true, [&] { ++ticks; });
    fx.runFor(1000);
    timer.setInterval(50);
    fx.runFor(120);
    timer.setInterval(0);
    fx.runFor(1000);
    EXPECT_EQ(ticks, 2);
}

TEST_F(TimerTest, OneShotByDisablingItselfFirst)
{
    int ticks = 0;
    Timer* self = nullptr;
    Timer timer(fx.loop, "Timer1", 10, true, [&] {
        self->setEnabled(false);
        ++ticks;
    });
    self = &timer;
    fx.runFor(500);
    EXPECT_EQ(ticks, 1);
}

TEST_F(TimerTest, ALateTickIsDeliveredOnceNotQueuedUp)
{
    std::vector<int64_t> ticks;
    Timer fast(fx.loop, "fast", 10, true, [&] { ticks.push_back(fx.clock.nowMs()); });
    // A busy handler holds the thread for 95 ms (nine intervals of the fast timer).
    Timer busy(fx.loop, "busy", 5, true, [&] {
        busy.setEnabled(false);
        fx.clock.advanceBy(95);
    });
    fx.runFor(130);
    ASSERT_GE(ticks.size(), 2u);
    EXPECT_EQ(ticks[0], 100); // one late tick, at once
    EXPECT_EQ(ticks[1], 110); // then the regular rhythm from there
}

TEST_F(TimerTest, EqualDueTimesFireInTheOrderTheTimersWereMade)
{
    std::string order;
    Timer b(fx.loop, "b", 50, true, [&] { order += "b"; });
    Timer a(fx.loop, "a", 50, true, [&] { order += "a"; });
    Timer c(fx.loop, "c", 25, true, [&] { order += "c"; });
    fx.runFor(50);
    EXPECT_EQ(order, "cbac"); // at 50 all three are due: b, a, c as made
}

TEST_F(TimerTest, InputIsServedBeforeTimersOfTheSameTurn)
{
    std::string order;
    struct KeyForm : runtime::Form {
        std::string& log;
        KeyForm(runtime::FormStack& s, std::string& l)
            : Form(s, "F")
            , log(l)
        {
        }
        void Form_KeyDown(int, int) override { log += "key "; }
    };
    fx.forms.define("F", [&](runtime::FormStack& s) { return std::make_unique<KeyForm>(s, order); });
    fx.forms.form("F").show();
    Timer timer(fx.loop, "t", 10, true, [&] { order += "tick "; });
    fx.clock.advanceBy(10);
    runtime::InputEvent key;
    key.vk = 40;
    fx.loop.postInput(key);
    fx.loop.doEvents();
    EXPECT_EQ(order, "key tick ");
}

TEST_F(TimerTest, DoEventsRunsOtherTimersButNeverReentersTheRunningHandler)
{
    int outer = 0, inner = 0, nested = 0;
    Timer other(fx.loop, "other", 10, true, [&] { ++inner; });
    Timer* self = nullptr;
    Timer slow(fx.loop, "slow", 10, true, [&] {
        ++outer;
        ++nested;
        // The handler lets other events run while time passes inside it.
        for (int i = 0; i < 5; ++i) {
            fx.clock.advanceBy(10);
            fx.loop.doEvents();
        }
        EXPECT_EQ(nested, 1) << "handler re-entered";
        --nested;
        self->setEnabled(false);
    });
    self = &slow;
    fx.runFor(10);
    EXPECT_EQ(outer, 1);
    EXPECT_GE(inner, 5); // 'other' ticked inside slow's doEvents
}

TEST_F(TimerTest, ATimerDestroyedByAnEarlierHandlerOfTheSameTurnDoesNotFire)
{
    int ticks = 0;
    std::unique_ptr<Timer> victim;
    Timer killer(fx.loop, "killer", 20, true, [&] { victim.reset(); });
    victim = std::make_unique<Timer>(fx.loop, "victim", 20, true, [&] { ++ticks; });
    fx.runFor(25); // both due at 20; 'killer' was made first and runs first
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(victim, nullptr);
}

} // namespace
