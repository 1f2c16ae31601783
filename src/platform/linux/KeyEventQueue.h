// KeyEventQueue: injected key events handed to a backend in order and at a pace an emulator can follow.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace ombrel::platform::linux {

// How fast injected keys go out.
struct KeyPacing
{
    std::chrono::milliseconds gap { 30 }; // after each event delivered
    std::chrono::milliseconds burst { 2 }; // events issued closer than this form one sequence
    // When an event is issued; only the burst window reads it.
    std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
};

// The program issues a key sequence back to back, on its event thread. A worker thread hands the events
// to the backend one at a time, in the order they were issued, and waits a gap after each one: an
// emulator that looks at the keyboard once a frame misses a press shorter than that, and sees two quick
// presses of one key as one.
//
// Because of the gap the queue would grow without end when the program presses a key faster than it
// can go out (the exit control repeats Esc every 5 ms while it is held). So a press of a key that still
// waits in the queue from an earlier sequence is dropped; the presses of one sequence (events issued
// within a burst window of each other) are all kept, since an emulator's list needs every Down.
//
// The backend sees each key go up only after it went down: a release of a key that is not down (or
// about to be) is dropped. On destruction, what waits is dropped and every key still down is released.
class KeyEventQueue
{
public:
    using Clock = std::chrono::steady_clock;
    // Puts one key event into the system; runs on the worker thread.
    using Deliver = std::function<void(int vk, bool up)>;

    explicit KeyEventQueue(Deliver deliver, KeyPacing pacing = {});
    ~KeyEventQueue();
    KeyEventQueue(const KeyEventQueue&) = delete;
    KeyEventQueue& operator=(const KeyEventQueue&) = delete;

    // Codes outside 1..255 are no keys and are dropped.
    void push(int vk, bool up);
    // Releases, in its turn, every key the backend holds down.
    void releaseAll();
    // Blocks until everything issued so far has been delivered.
    void waitIdle();

private:
    struct Item
    {
        int vk = 0;
        bool up = false;
        bool releaseAll = false;
        unsigned burst = 0;
    };
    static constexpr int kKeyCount = 256;

    void startBurst();
    void run();
    void deliver(const Item& item);

    Deliver m_deliver;
    KeyPacing m_pacing;

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::deque<Item> m_pending;
    bool m_busy = false;
    bool m_stop = false;

    // Issuing side (under the lock): which keys will be down once the queue has run, and the sequence.
    std::vector<bool> m_queuedDown = std::vector<bool>(kKeyCount, false);
    unsigned m_burst = 0;
    Clock::time_point m_lastIssued {};

    // Worker side: keys delivered down and not yet up, in the order they went down.
    std::vector<int> m_held;

    std::thread m_worker; // last: it starts after every member it uses
};

} // namespace ombrel::platform::linux
