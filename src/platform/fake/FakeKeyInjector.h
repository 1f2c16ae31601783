// FakeKeyInjector: records the key presses the program sends into a game.
#pragma once

#include "platform/KeyInjector.h"
#include "runtime/Trace.h"

namespace ombrel::platform::fake {

// Trace lines: "inject down <vk>", "inject up <vk>", "inject release-all".
class FakeKeyInjector final : public KeyInjector {
public:
    explicit FakeKeyInjector(runtime::Trace& trace)
        : m_trace(trace)
    {
    }
    void keyEvent(int vk, bool up) override;
    void releaseAll() override;

private:
    runtime::Trace& m_trace;
};

} // namespace ombrel::platform::fake
