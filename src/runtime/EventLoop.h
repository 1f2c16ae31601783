// EventLoop: the one thread's loop. Each turn serves posted tasks, then queued input, then the timers
// that are due (earliest first, equal times in the order the timers were made), then paints if
// anything changed. doEvents() is one such turn without waiting: handlers run inside it.
#pragma once

#include "runtime/Clock.h"
#include "runtime/InputEvent.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

namespace ombrel::runtime {

class EventSource;
class Timer;

class EventLoop {
public:
    explicit EventLoop(Clock& clock);
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    Clock& clock() { return m_clock; }
    int64_t now() const { return m_clock.nowMs(); }

    void setSource(EventSource* source) { m_source = source; }
    // Who gets the input (the form stack).
    void setInputHandler(std::function<void(const InputEvent&)> handler) { m_inputHandler = std::move(handler); }
    // Called at the end of every turn: paint if something changed.
    void setPaintHandler(std::function<void()> handler) { m_paintHandler = std::move(handler); }

    // Queue input; it is served before any timer of the same turn.
    void postInput(InputEvent event);
    // From any thread: run fn on the loop's thread at the start of the next turn.
    void postTask(std::function<void()> fn);

    // "Let other events run": serve pending tasks, input and due timers once, then return.
    void doEvents();
    // Serve events, waiting for them, until the clock reaches t or quit() is called.
    void runUntil(int64_t t);
    void runFor(int64_t ms) { runUntil(now() + ms); }
    // Serve events until quit() is called or the source has nothing more to give. Returns the exit code.
    int run();

    void quit(int code = 0);
    bool quitting() const { return m_quit; }
    int exitCode() const { return m_exitCode; }

    // How many turns are running inside one another (1 in a plain turn, 2 inside a doEvents() there).
    int depth() const { return m_depth; }

    // Earliest due time of any enabled timer.
    std::optional<int64_t> nextTimerDue() const;

private:
    friend class Timer;
    void addTimer(Timer* timer);
    void removeTimer(Timer* timer);

    void turn(); // one turn: tasks, input, timers, paint
    void runTasks();
    void dispatchInput();
    void fireDueTimers();
    bool waitForWork(std::optional<int64_t> deadline);

    Clock& m_clock;
    EventSource* m_source = nullptr;
    std::function<void(const InputEvent&)> m_inputHandler;
    std::function<void()> m_paintHandler;
    std::deque<InputEvent> m_input;
    std::mutex m_taskMutex;
    std::vector<std::function<void()>> m_tasks;
    std::vector<Timer*> m_timers; // in order of creation
    int m_depth = 0;
    bool m_quit = false;
    int m_exitCode = 0;
};

} // namespace ombrel::runtime
