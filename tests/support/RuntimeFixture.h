// RuntimeFixture: a virtual clock, an event loop, fakes for fonts, pictures and the screen, and a form
// stack over them; tests push input, move time and read what was traced.
#pragma once

#include "core/FailureLog.h"
#include "platform/Files.h"
#include "platform/fake/FakeFonts.h"
#include "platform/fake/FakeImages.h"
#include "platform/fake/FakeRenderer.h"
#include "runtime/Clock.h"
#include "runtime/Control.h"
#include "runtime/EventLoop.h"
#include "runtime/EventSource.h"
#include "runtime/FormStack.h"
#include "runtime/Trace.h"

#include <array>
#include <sstream>
#include <string>
#include <vector>

namespace ombrel::test {

// Collects trace lines in memory.
class RecordingTrace final : public runtime::Trace {
public:
    void effect(std::string_view line) override { lines.emplace_back(line); }
    std::vector<std::string> lines;
};

// Waiting jumps the virtual clock straight to the deadline; no input ever arrives by itself.
class JumpingSource final : public runtime::EventSource {
public:
    explicit JumpingSource(runtime::VirtualClock& clock)
        : m_clock(clock)
    {
    }
    void poll(runtime::EventLoop&) override { }
    bool wait(runtime::EventLoop&, std::optional<int64_t> deadline) override
    {
        if (!deadline)
            return false;
        m_clock.advanceTo(*deadline);
        return true;
    }

private:
    runtime::VirtualClock& m_clock;
};

// A control's place and size as one value: Left, Top, Width, Height.
using Box = std::array<double, 4>;
inline Box boxOf(const runtime::Control& control)
{
    return { control.left(), control.top(), control.width(), control.height() };
}

class RuntimeFixture {
public:
    RuntimeFixture();

    // Posts one input event and serves it at once.
    void post(runtime::InputKind kind, int vk = 0, int shift = 0, const std::string& target = {});
    void keyDown(int vk, int shift = 0) { post(runtime::InputKind::KeyDown, vk, shift); }
    void keyUp(int vk, int shift = 0) { post(runtime::InputKind::KeyUp, vk, shift); }
    void click(const std::string& target) { post(runtime::InputKind::Click, 0, 0, target); }
    void dblclick(const std::string& target) { post(runtime::InputKind::DblClick, 0, 0, target); }
    void focusLost() { post(runtime::InputKind::FocusLost); }
    void focusGained() { post(runtime::InputKind::FocusGained); }
    // Serves what is pending without moving time.
    void settle() { loop.doEvents(); }
    void runFor(int64_t ms) { loop.runFor(ms); }
    // A form of that name with no controls of its own, 7680 by 5760 twips, loaded.
    runtime::Form& plainForm(const std::string& name);

    runtime::VirtualClock clock;
    JumpingSource source { clock };
    runtime::EventLoop loop { clock };
    RecordingTrace trace;
    platform::fake::FakeFonts fonts;
    platform::fake::FakeImages images;
    platform::DiskFiles files;
    platform::fake::FakeRenderer renderer;
    std::ostringstream failureText; // what the failure log writes; it has no file
    core::FailureLog failures { "", failureText };
    runtime::FormStack forms;
};

} // namespace ombrel::test
