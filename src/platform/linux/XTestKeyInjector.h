// XTestKeyInjector: simulated key presses into the X display through the XTEST extension.
#pragma once

#include "platform/KeyInjector.h"
#include "platform/linux/KeyEventQueue.h"
#include "platform/linux/XConnection.h"
#include "runtime/Trace.h"

#include <memory>

namespace ombrel::platform::linux {

// The keys reach whichever window has the X focus, as a real keyboard's would. Each virtual key presses
// the key that the display's keymap has for its keysym; a code the keymap has no key for is left out.
// Trace lines, written when the program issues the event: "inject down <vk>", "inject up <vk>",
// "inject release-all".
class XTestKeyInjector final : public KeyInjector
{
public:
    // nullptr when the display cannot be opened or has no XTEST extension. A null name means $DISPLAY.
    static std::unique_ptr<XTestKeyInjector> open(
        runtime::Trace& trace, const char* displayName = nullptr, KeyPacing pacing = {});

    void keyEvent(int vk, bool up) override;
    void releaseAll() override;
    // Blocks until every event issued so far has reached the display.
    void waitIdle() { m_queue.waitIdle(); }

private:
    XTestKeyInjector(XConnection connection, runtime::Trace& trace, KeyPacing pacing);
    void send(int vk, bool up);

    XConnection m_connection; // used by the queue's worker alone
    runtime::Trace& m_trace;
    KeyEventQueue m_queue; // last: its worker stops, and releases held keys, before the display closes
};

} // namespace ombrel::platform::linux
