// The timer rules and the order of the event loop, on a virtual clock.
#include "RuntimeFixture.h"

#include "runtime/Timer.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace ombrel;
using runtime::Timer;

namespace {

class TimerTest : public ::testing::Test {
protected:
    test::RuntimeFixture fx;
};

TEST_F(TimerTest, EnablingAndIntervalRules)
{
    struct Row
    {
        const char* name;
        int interval;
        bool enabled;
        std::function<void(Timer&)> steps; // what is done to the timer over 500 ms
        std::vector<int64_t> ticks;
    };
    const Row rows[] = {
        { "enablingStartsTheCountFromNow", 100, false,
            [&](Timer& t) { fx.runFor(250); t.setEnabled(true); fx.runFor(250); }, { 350, 450 } },
        { "enablingAnEnabledTimerChangesNothing", 100, true,
            [&](Timer& t) { fx.runFor(60); t.setEnabled(true); fx.runFor(60); }, { 100 } },
        // The same value restarts the count too.
        { "settingTheIntervalRestartsTheCount", 100, true,
            [&](Timer& t) { fx.runFor(80); t.setInterval(100); fx.runFor(150); }, { 180 } },
        { "intervalZeroGivesNoTicks", 0, true,
            [&](Timer& t) { fx.runFor(100); t.setInterval(50); fx.runFor(120); t.setInterval(0); fx.runFor(200); },
            { 150, 200 } },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const int64_t start = fx.clock.nowMs();
        std::vector<int64_t> ticks;
        Timer timer(fx.loop, "t", row.interval, row.enabled, [&] { ticks.push_back(fx.clock.nowMs() - start); });
        row.steps(timer);
        EXPECT_EQ(ticks, row.ticks);
    }
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

TEST_F(TimerTest, AnIdleTimerWakesNothingButTicksWhenTheLoopIsAwake)
{
    bool idle = true;
    std::vector<int64_t> ticks;
    Timer poll(fx.loop, "poll", 10, true, [&] { ticks.push_back(fx.clock.nowMs()); });
    poll.idleWhen = [&] { return idle; };
    Timer other(fx.loop, "other", 100, true);
    fx.runFor(250);
    EXPECT_EQ(ticks, (std::vector<int64_t> { 100, 200, 250 })); // only when the loop wakes for something else
    ticks.clear();
    idle = false;
    fx.runFor(30);
    EXPECT_EQ(ticks, (std::vector<int64_t> { 260, 270, 280 }));
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
