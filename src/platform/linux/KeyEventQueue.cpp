// KeyEventQueue: the worker that delivers injected keys in order, one gap apart.
#include "platform/linux/KeyEventQueue.h"

#include <algorithm>

namespace ombrel::platform::linux {

KeyEventQueue::KeyEventQueue(Deliver deliver, KeyPacing pacing)
    : m_deliver(std::move(deliver))
    , m_pacing(std::move(pacing))
    , m_worker([this] { run(); })
{
}

KeyEventQueue::~KeyEventQueue()
{
    {
        std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_wake.notify_all();
    m_worker.join();
    // No gap here: the program is going away, and a key left down would stay down for the whole desktop.
    for (auto it = m_held.rbegin(); it != m_held.rend(); ++it)
        m_deliver(*it, true);
}

void KeyEventQueue::startBurst()
{
    const Clock::time_point now = m_pacing.now();
    if (m_burst == 0 || now - m_lastIssued > m_pacing.burst)
        ++m_burst;
    m_lastIssued = now;
}

void KeyEventQueue::push(int vk, bool up)
{
    if (vk <= 0 || vk >= kKeyCount)
        return;
    const auto key = static_cast<std::size_t>(vk);
    {
        std::lock_guard lock(m_mutex);
        startBurst();
        if (up) {
            if (!m_queuedDown[key])
                return;
            m_queuedDown[key] = false;
        } else {
            const bool waitsFromEarlier
                = std::any_of(m_pending.begin(), m_pending.end(), [&](const Item& item) {
                      return !item.releaseAll && item.vk == vk && !item.up && item.burst != m_burst;
                  });
            if (waitsFromEarlier)
                return; // its release goes too: the key is not down in the queue's view
            m_queuedDown[key] = true;
        }
        m_pending.push_back(Item { vk, up, false, m_burst });
    }
    m_wake.notify_one();
}

void KeyEventQueue::releaseAll()
{
    {
        std::lock_guard lock(m_mutex);
        startBurst();
        std::fill(m_queuedDown.begin(), m_queuedDown.end(), false);
        m_pending.push_back(Item { 0, true, true, m_burst });
    }
    m_wake.notify_one();
}

void KeyEventQueue::waitIdle()
{
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_stop || (m_pending.empty() && !m_busy); });
}

void KeyEventQueue::run()
{
    Clock::time_point nextAt = Clock::now();
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_stop || !m_pending.empty(); });
        if (m_stop)
            break;
        if (m_wake.wait_until(lock, nextAt, [this] { return m_stop; }))
            break;
        const Item item = m_pending.front();
        m_pending.pop_front();
        m_busy = true;
        lock.unlock();
        deliver(item);
        lock.lock();
        m_busy = false;
        nextAt = Clock::now() + m_pacing.gap;
        if (m_pending.empty())
            m_idle.notify_all();
    }
    m_idle.notify_all();
}

void KeyEventQueue::deliver(const Item& item)
{
    if (item.releaseAll) {
        for (auto it = m_held.rbegin(); it != m_held.rend(); ++it)
            m_deliver(*it, true);
        m_held.clear();
        return;
    }
    const auto held = std::find(m_held.begin(), m_held.end(), item.vk);
    if (item.up) {
        if (held != m_held.end())
            m_held.erase(held);
    } else if (held == m_held.end()) {
        m_held.push_back(item.vk);
    }
    m_deliver(item.vk, item.up);
}

} // namespace ombrel::platform::linux
