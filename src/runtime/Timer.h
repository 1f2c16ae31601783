// Timer: a form's timer. Interval in ms; enabling a disabled timer starts its count from now; enabling
// an enabled one changes nothing; setting the interval restarts the count; interval 0 gives no ticks.
// A late tick is delivered once, never queued up; a handler is never re-entered while it runs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace ombrel::runtime {

class EventLoop;

class Timer {
public:
    Timer(EventLoop& loop, std::string name, int intervalMs, bool enabled, std::function<void()> onTimer = {});
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    const std::string& name() const { return m_name; }

    bool enabled() const { return m_enabled; }
    void setEnabled(bool on);
    int interval() const { return m_interval; }
    void setInterval(int ms);

    // The tick handler (the system's <name>_Timer).
    std::function<void()> onTimer;
    // True while a tick could change nothing (a poll whose only effect is already done): the loop
    // does not wake up for this timer then, though it still ticks whenever the loop is awake anyway.
    std::function<bool()> idleWhen;

    // When the next tick is due, if it will come at all.
    std::optional<int64_t> due() const;
    bool running() const { return m_running; }

private:
    friend class EventLoop;
    void fire(); // called by the loop when due

    EventLoop& m_loop;
    std::string m_name;
    int m_interval;
    bool m_enabled = false;
    bool m_running = false;
    int64_t m_due = 0;
};

} // namespace ombrel::runtime
