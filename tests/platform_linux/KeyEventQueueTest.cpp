// Tests of the order, the release rules and the bound of the injected key queue.
#include "platform/linux/KeyEventQueue.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace ombrel::platform::linux {
namespace {

using namespace std::chrono_literals;
using Events = std::vector<std::string>;

// The backend: records what reaches it, and can be held shut so that events pile up behind the one it
// is delivering.
class Backend
{
public:
    void deliver(int vk, bool up)
    {
        std::unique_lock lock(m_mutex);
        m_waiting = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_open; });
        m_waiting = false;
        m_events.push_back((up ? "up " : "down ") + std::to_string(vk));
    }
    void setOpen(bool open)
    {
        std::lock_guard lock(m_mutex);
        m_open = open;
        m_changed.notify_all();
    }
    // Returns once an event is being held at the shut backend.
    void waitUntilHolding()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_waiting; });
    }
    Events events()
    {
        std::lock_guard lock(m_mutex);
        return m_events;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_open = true;
    bool m_waiting = false;
    Events m_events;
};

class KeyEventQueueTest : public ::testing::Test
{
protected:
    KeyEventQueue& queue() { return *m_queue; }
    void press(int vk)
    {
        m_queue->push(vk, false);
        m_queue->push(vk, true);
    }
    void advance(std::chrono::milliseconds ms) { m_now += ms; }
    void endQueue() { m_queue.reset(); }

    Backend backend;

private:
    std::chrono::steady_clock::time_point m_now {};
    KeyPacing pacing()
    {
        KeyPacing pacing;
        pacing.gap = 0ms;
        pacing.now = [this] { return m_now; };
        return pacing;
    }
    std::unique_ptr<KeyEventQueue> m_queue
        = std::make_unique<KeyEventQueue>([this](int vk, bool up) { backend.deliver(vk, up); }, pacing());
};

TEST_F(KeyEventQueueTest, PressRepeatedByLaterTicksWaitsOnlyOnce)
{
    backend.setOpen(false);
    press(27);
    backend.waitUntilHolding();
    // The exit control held: one Esc per 5 ms tick while the first is still going out.
    for (int tick = 0; tick < 4; ++tick) {
        advance(5ms);
        press(27);
    }
    backend.setOpen(true);
    queue().waitIdle();
    EXPECT_EQ(backend.events(), (Events { "down 27", "up 27", "down 27", "up 27" }));

    advance(5ms); // once the queue has run dry a press goes out again
    press(27);
    queue().waitIdle();
    EXPECT_EQ(backend.events().size(), 6u);
}

// Events go out in their order (Alt up before F, as a player's menu closes); release-all lets go in
// reverse order; releases of keys not down and codes without a key send nothing; keys still down when
// the queue ends are released.
TEST_F(KeyEventQueueTest, ReleasesOnlyWhatIsDownAndEverythingAtTheEnd)
{
    for (auto [vk, up] :
        { std::pair { 18, false }, { 70, false }, { 18, true }, { 70, true }, { 17, false }, { 18, false } })
        queue().push(vk, up);
    queue().releaseAll();
    queue().push(18, true); // already released: nothing more to send
    queue().push(65, true); // never pressed
    queue().push(0, false); // no key
    queue().push(256, false);
    press(13);
    queue().push(16, false);
    press(65);
    queue().waitIdle();
    endQueue();
    EXPECT_EQ(backend.events(),
        (Events { "down 18", "down 70", "up 18", "up 70", "down 17", "down 18", "up 18", "up 17", "down 13",
            "up 13", "down 16", "down 65", "up 65", "up 16" }));
}

} // namespace
} // namespace ombrel::platform::linux
