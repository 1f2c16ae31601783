// EventSource: where the event loop's input comes from and how it waits. The real one waits on the
// window system; the virtual one moves a VirtualClock to the next scripted input or timer.
#pragma once

#include <cstdint>
#include <optional>

namespace ombrel::runtime {

class EventLoop;

class EventSource {
public:
    virtual ~EventSource() = default;
    // Post to the loop whatever input is pending, without waiting.
    virtual void poll(EventLoop& loop) = 0;
    // Wait until input arrives (and post it) or the clock reaches deadline (no deadline: wait for
    // input). Returns false when no input can ever come again and there is no deadline (end of a
    // replay script): the loop then ends.
    virtual bool wait(EventLoop& loop, std::optional<int64_t> deadlineMs) = 0;
    // From any thread: make a wait return early, because a task was posted.
    virtual void wake() { }
};

} // namespace ombrel::runtime
