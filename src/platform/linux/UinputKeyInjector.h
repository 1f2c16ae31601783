// UinputKeyInjector: simulated key presses through a virtual keyboard made with the kernel's uinput.
#pragma once

#include "platform/KeyInjector.h"
#include "platform/linux/KeyEventQueue.h"
#include "runtime/Trace.h"

#include <memory>
#include <string>

namespace ombrel::platform::linux {

// The virtual keyboard is a real input device to the kernel, so its keys reach any display server and
// the console. Each event is written as a key record and a report record (the kernel's input_event).
// Trace lines as for every injector: "inject down <vk>", "inject up <vk>", "inject release-all".
class UinputKeyInjector final : public KeyInjector
{
public:
    // Opens path for writing. On a character device (the uinput device) a virtual keyboard with every
    // key of the virtual-key table is set up first; any other file just receives the records, which is
    // how they can be read back. nullptr when the file cannot be opened or the keyboard not set up.
    static std::unique_ptr<UinputKeyInjector> open(
        runtime::Trace& trace, const std::string& path = "/dev/uinput", KeyPacing pacing = {});

    void keyEvent(int vk, bool up) override;
    void releaseAll() override;
    // Blocks until every event issued so far has been written.
    void waitIdle() { m_queue.waitIdle(); }

private:
    // The open file, and the virtual keyboard on it when there is one; both go at destruction.
    class Device
    {
    public:
        Device(int fd, bool keyboard)
            : m_fd(fd)
            , m_keyboard(keyboard)
        {
        }
        ~Device();
        Device(const Device&) = delete;
        Device& operator=(const Device&) = delete;
        int fd() const { return m_fd; }

    private:
        int m_fd;
        bool m_keyboard;
    };

    UinputKeyInjector(int fd, bool keyboard, runtime::Trace& trace, KeyPacing pacing);
    void send(int vk, bool up);

    Device m_device;
    runtime::Trace& m_trace;
    KeyEventQueue m_queue; // last: its worker stops, and releases held keys, before the device goes
};

} // namespace ombrel::platform::linux
