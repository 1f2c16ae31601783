// ReplayDriver: the event source of a replay run. It moves the virtual clock from one scripted moment to
// the next (or to the next timer, whichever comes first) and hands the script's input to the loop at its
// time, so a run takes no real time and gives the same trace every time.
#pragma once

#include "platform/Renderer.h"
#include "platform/fake/FakeCursor.h"
#include "platform/fake/FakeJoystick.h"
#include "platform/fake/FakeKeyState.h"
#include "platform/fake/FakePower.h"
#include "platform/fake/FakeProcesses.h"
#include "replay/ReplayFiles.h"
#include "replay/ReplayScript.h"
#include "runtime/Clock.h"
#include "runtime/DrawList.h"
#include "runtime/EventLoop.h"
#include "runtime/EventSource.h"
#include "runtime/Trace.h"

#include <functional>
#include <string>
#include <vector>

namespace ombrel::replay {

// What the script's lines act on besides the loop.
struct ReplayDevices {
    platform::fake::FakeKeyState& keyState;
    platform::fake::FakeJoystick& joystick;
    platform::fake::FakeCursor& cursor;
    platform::fake::FakeProcesses& processes;
    platform::fake::FakePower& power;
    ReplayFiles& files;
    platform::Renderer& renderer;
};

// Order within one moment: input lines are served before the timers due at that moment; a screenshot or
// dump is taken once everything due at its moment has run. While the program waits for a game
// (Processes::waitForExit) nothing of the program runs: the clock jumps to the script's next
// "process exit", key and mouse lines in between are dropped (the game had them), the key state and the
// stick still change, and focus changes queue up for when the wait is over. The script's faults are
// served like input: in script order with the input of their moment, and during a wait too.
class ReplayDriver final : public runtime::EventSource {
public:
    // A script without "end" ends when nothing is pending, or this long after its last line, whichever
    // comes first: the browser's timers never all stop, so "nothing pending" alone might never come.
    static constexpr int64_t kIdleLimitMs = 60'000;

    // Becomes the loop's event source and the processes' wait.
    ReplayDriver(ReplayScript script, runtime::EventLoop& loop, runtime::VirtualClock& clock,
                 runtime::Trace& trace, ReplayDevices devices);
    ~ReplayDriver() override;
    ReplayDriver(const ReplayDriver&) = delete;
    ReplayDriver& operator=(const ReplayDriver&) = delete;

    // What a screenshot paints (the form stack's frame) and what a dump writes (one trace line each).
    void setFrameSource(std::function<runtime::DrawList()> frame) { m_frame = std::move(frame); }
    void setDumpSource(std::function<std::vector<std::string>()> dump) { m_dump = std::move(dump); }

    // Scripted input comes only while the loop waits: virtual time does not pass inside a handler.
    void poll(runtime::EventLoop& loop) override { (void)loop; }
    bool wait(runtime::EventLoop& loop, std::optional<int64_t> deadlineMs) override;

    bool ended() const { return m_ended; }

private:
    // Input and faults: served at their moment before its timers.
    static bool isInput(const ScriptStep& step);
    bool waitForProcess(int id);
    void postInputsDueNow();
    void deliver(const ScriptStep& step, bool gameHasInput);
    void arm(const ScriptStep& step);
    void screenshot(const ScriptStep& step);
    void dump();
    void finish();

    ReplayScript m_script;
    runtime::EventLoop& m_loop;
    runtime::VirtualClock& m_clock;
    runtime::Trace& m_trace;
    ReplayDevices m_devices;
    std::function<runtime::DrawList()> m_frame;
    std::function<std::vector<std::string>()> m_dump;
    size_t m_next = 0; // the first step not yet served
    bool m_ended = false;
};

} // namespace ombrel::replay
