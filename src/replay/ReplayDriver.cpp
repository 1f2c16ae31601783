// ReplayDriver: scripted time and input for the event loop.
#include "replay/ReplayDriver.h"

#include <iostream>

namespace ombrel::replay {

using Action = ScriptStep::Action;

ReplayDriver::ReplayDriver(ReplayScript script, runtime::EventLoop& loop, runtime::VirtualClock& clock,
                           runtime::Trace& trace, ReplayDevices devices)
    : m_script(std::move(script))
    , m_loop(loop)
    , m_clock(clock)
    , m_trace(trace)
    , m_devices(devices)
{
    m_loop.setSource(this);
    m_devices.processes.onWait = [this](int id) { return waitForProcess(id); };
}

ReplayDriver::~ReplayDriver()
{
    m_devices.processes.onWait = nullptr;
    m_loop.setSource(nullptr);
}

bool ReplayDriver::isInput(const ScriptStep& step)
{
    switch (step.action) {
    case Action::Input:
    case Action::Joy:
    case Action::FailLaunch:
    case Action::FailWrite:
    case Action::RefusePower:
        return true;
    case Action::ProcessExit:
    case Action::Screenshot:
    case Action::Dump:
    case Action::End:
        break;
    }
    return false;
}

bool ReplayDriver::wait(runtime::EventLoop& loop, std::optional<int64_t> deadlineMs)
{
    (void)loop; // the loop given at construction
    const auto& steps = m_script.steps();
    while (!m_ended) {
        if (m_next == steps.size()) {
            const int64_t limit = (steps.empty() ? 0 : steps.back().at) + kIdleLimitMs;
            if (!deadlineMs || *deadlineMs > limit) {
                if (deadlineMs)
                    m_clock.advanceTo(limit);
                finish();
                return false;
            }
            m_clock.advanceTo(*deadlineMs);
            return true;
        }
        const ScriptStep& step = steps[m_next];
        if (deadlineMs && *deadlineMs < step.at) {
            m_clock.advanceTo(*deadlineMs);
            return true;
        }
        const bool moved = m_clock.nowMs() < step.at;
        m_clock.advanceTo(step.at);
        if (isInput(step)) {
            postInputsDueNow();
            return true;
        }
        if (moved)
            return true; // the timers due at this moment run before the screenshot or dump
        ++m_next;
        switch (step.action) {
        case Action::Screenshot:
            screenshot(step);
            break;
        case Action::Dump:
            dump();
            break;
        case Action::ProcessExit:
            m_devices.processes.exitLatest();
            break;
        case Action::End:
            finish();
            return false;
        case Action::Input:
        case Action::Joy:
        case Action::FailLaunch:
        case Action::FailWrite:
        case Action::RefusePower:
            break; // served by postInputsDueNow
        }
    }
    return false;
}

void ReplayDriver::postInputsDueNow()
{
    const auto& steps = m_script.steps();
    while (m_next < steps.size() && steps[m_next].at <= m_clock.nowMs() && isInput(steps[m_next]))
        deliver(steps[m_next++], false);
}

void ReplayDriver::deliver(const ScriptStep& step, bool gameHasInput)
{
    using runtime::InputKind;
    if (step.action == Action::Joy) {
        m_devices.joystick.set(step.joy);
        return;
    }
    if (step.action != Action::Input) {
        arm(step);
        return;
    }
    const runtime::InputEvent& event = step.input;
    switch (event.kind) {
    case InputKind::KeyDown:
    case InputKind::KeyUp:
        // The key state is read globally, even while a game has the keyboard.
        m_devices.keyState.set(event.vk, event.kind == InputKind::KeyDown);
        break;
    case InputKind::FocusLost:
    case InputKind::FocusGained:
    case InputKind::Quit:
        m_loop.postInput(event); // window events wait in the queue while the program is blocked
        return;
    default:
        if (step.hasPosition)
            m_devices.cursor.moveTo(event.x, event.y);
        break;
    }
    if (!gameHasInput)
        m_loop.postInput(event);
}

void ReplayDriver::arm(const ScriptStep& step)
{
    switch (step.action) {
    case Action::FailLaunch:
        m_devices.processes.failNextStart();
        break;
    case Action::FailWrite:
        m_devices.files.failNextWrite(step.file);
        break;
    case Action::RefusePower:
        // The power-off itself refuses with its own number; every other number is the check's answer.
        if (step.errorNumber == platform::kErrShutdownFailed)
            m_devices.power.setPowerOffResult(step.errorNumber);
        else
            m_devices.power.setCheckResult(step.errorNumber);
        m_devices.power.setSystemError(step.systemError);
        break;
    default:
        break;
    }
}

bool ReplayDriver::waitForProcess(int id)
{
    (void)id; // the script ends whichever game runs
    const auto& steps = m_script.steps();
    while (!m_ended) {
        if (m_next == steps.size()) {
            finish(); // the game never ends: neither does the wait
            return false;
        }
        const ScriptStep& step = steps[m_next++];
        m_clock.advanceTo(step.at);
        if (isInput(step)) {
            deliver(step, true);
            continue;
        }
        switch (step.action) {
        case Action::Screenshot:
            screenshot(step);
            break;
        case Action::Dump:
            dump();
            break;
        case Action::ProcessExit:
            return true;
        case Action::End:
            finish();
            return false;
        default:
            break;
        }
    }
    return false;
}

void ReplayDriver::screenshot(const ScriptStep& step)
{
    const runtime::DrawList frame = m_frame ? m_frame() : runtime::DrawList {};
    const std::string problem = m_devices.renderer.screenshot(frame, step.file);
    if (problem.empty()) {
        m_trace.effect("screenshot " + step.file);
        return;
    }
    // The reason may name absolute paths or the library's words: standard error, not the trace.
    std::cerr << "ombrel: screenshot " << step.file << " (script line " << step.line << "): " << problem << "\n";
    m_trace.effect("screenshot " + step.file + " failed");
}

void ReplayDriver::dump()
{
    // Each line of the source is one trace line: the source escapes what it shows, and the trace
    // escapes whatever line break is left, so nothing is cut in two.
    const std::vector<std::string> lines = m_dump ? m_dump() : std::vector<std::string> {};
    if (lines.empty())
        m_trace.effect("dump");
    for (const std::string& line : lines)
        m_trace.effect(line.empty() ? std::string("dump") : "dump " + line);
}

void ReplayDriver::finish()
{
    if (m_ended)
        return;
    m_ended = true;
    m_trace.effect("end");
    m_loop.quit(0);
}

} // namespace ombrel::replay
