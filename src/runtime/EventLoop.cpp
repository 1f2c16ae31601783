// EventLoop: tasks, then input, then due timers, then paint; waiting through the EventSource.
#include "runtime/EventLoop.h"

#include "runtime/EventSource.h"
#include "runtime/Timer.h"

#include <algorithm>

namespace ombrel::runtime {

EventLoop::EventLoop(Clock& clock)
    : m_clock(clock)
{
}

void EventLoop::postInput(InputEvent event) { m_input.push_back(std::move(event)); }

void EventLoop::postTask(std::function<void()> fn)
{
    {
        std::lock_guard lock(m_taskMutex);
        m_tasks.push_back(std::move(fn));
    }
    if (m_source)
        m_source->wake();
}

void EventLoop::quit(int code)
{
    if (!m_quit)
        m_exitCode = code;
    m_quit = true;
}

void EventLoop::addTimer(Timer* timer) { m_timers.push_back(timer); }

void EventLoop::removeTimer(Timer* timer)
{
    // NOTE: a timer may be destroyed while fireDueTimers walks its snapshot; the snapshot is checked
    // against m_timers before each call, so only the pointer is removed here.
    std::erase(m_timers, timer);
}

std::optional<int64_t> EventLoop::nextTimerDue() const
{
    std::optional<int64_t> best;
    for (const Timer* timer : m_timers) {
        if (timer->running() || (timer->idleWhen && timer->idleWhen()))
            continue;
        if (auto due = timer->due(); due && (!best || *due < *best))
            best = due;
    }
    return best;
}

void EventLoop::runTasks()
{
    std::vector<std::function<void()>> tasks;
    {
        std::lock_guard lock(m_taskMutex);
        tasks.swap(m_tasks);
    }
    for (auto& task : tasks)
        task();
}

void EventLoop::dispatchInput()
{
    // Only what was queued when the turn began: input posted by a handler waits for the next turn.
    size_t count = m_input.size();
    while (count-- > 0 && !m_input.empty()) {
        InputEvent event = std::move(m_input.front());
        m_input.pop_front();
        if (m_inputHandler)
            m_inputHandler(event);
    }
}

void EventLoop::fireDueTimers()
{
    const int64_t now = m_clock.nowMs();
    std::vector<Timer*> due;
    for (Timer* timer : m_timers) {
        auto when = timer->due();
        if (when && *when <= now && !timer->running())
            due.push_back(timer);
    }
    // Earliest first; equal times in the order the timers were made (stable sort keeps it).
    std::stable_sort(due.begin(), due.end(), [](Timer* a, Timer* b) { return *a->due() < *b->due(); });
    for (Timer* timer : due) {
        // A handler before this one may have destroyed, stopped or restarted it.
        if (std::find(m_timers.begin(), m_timers.end(), timer) == m_timers.end())
            continue;
        auto when = timer->due();
        if (!when || *when > now || timer->running())
            continue;
        timer->fire();
    }
}

void EventLoop::turn()
{
    struct Depth {
        int& d;
        explicit Depth(int& v) : d(++v) { }
        ~Depth() { --d; }
    } depth(m_depth);
    if (m_source)
        m_source->poll(*this);
    runTasks();
    dispatchInput();
    fireDueTimers();
    if (m_paintHandler)
        m_paintHandler();
}

void EventLoop::doEvents() { turn(); }

bool EventLoop::waitForWork(std::optional<int64_t> deadline)
{
    if (!m_input.empty())
        return true;
    {
        std::lock_guard lock(m_taskMutex);
        if (!m_tasks.empty())
            return true;
    }
    auto timerDue = nextTimerDue();
    std::optional<int64_t> until = deadline;
    if (timerDue && (!until || *timerDue < *until))
        until = timerDue;
    if (until && *until <= m_clock.nowMs())
        return true;
    if (!m_source)
        return until.has_value();
    return m_source->wait(*this, until);
}

void EventLoop::runUntil(int64_t t)
{
    while (!m_quit) {
        turn();
        if (m_quit || m_clock.nowMs() >= t)
            break;
        if (!waitForWork(t))
            break;
    }
}

int EventLoop::run()
{
    while (!m_quit) {
        turn();
        if (m_quit)
            break;
        if (!waitForWork(std::nullopt))
            break;
    }
    return m_exitCode;
}

} // namespace ombrel::runtime
