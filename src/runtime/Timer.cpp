// Timer: the only place where the rules of a form's timer live.
#include "runtime/Timer.h"

#include "runtime/EventLoop.h"

namespace ombrel::runtime {

Timer::Timer(EventLoop& loop, std::string name, int intervalMs, bool enabled, std::function<void()> handler)
    : onTimer(std::move(handler))
    , m_loop(loop)
    , m_name(std::move(name))
    , m_interval(intervalMs)
{
    m_loop.addTimer(this);
    setEnabled(enabled);
}

Timer::~Timer() { m_loop.removeTimer(this); }

void Timer::setEnabled(bool on)
{
    if (on == m_enabled)
        return; // enabling an enabled timer changes nothing
    m_enabled = on;
    if (on)
        m_due = m_loop.now() + m_interval;
}

void Timer::setInterval(int ms)
{
    m_interval = ms;
    // Setting the interval restarts the count, even to the same value.
    if (m_enabled)
        m_due = m_loop.now() + m_interval;
}

std::optional<int64_t> Timer::due() const
{
    if (!m_enabled || m_interval <= 0)
        return std::nullopt;
    return m_due;
}

void Timer::fire()
{
    const int64_t firedAt = m_loop.now();
    // The next tick counts from the one due now; if the loop was so late that it has passed as well,
    // from now: a late tick is delivered once, never queued up.
    m_due += m_interval;
    if (m_due <= firedAt)
        m_due = firedAt + m_interval;
    if (!onTimer)
        return;
    m_running = true;
    // NOTE: the handler may destroy this timer (unloading its form); the form defers destruction to the
    // end of the turn, so this object outlives the call.
    onTimer();
    m_running = false;
}

} // namespace ombrel::runtime
