// FakeKeyState: which keys are held down, as the test or the replay script says.
#pragma once

#include "platform/KeyState.h"

#include <array>

namespace ombrel::platform::fake {

class FakeKeyState final : public KeyState {
public:
    bool isDown(int vk) override { return inRange(vk) && m_down[size_t(vk)]; }
    void set(int vk, bool down)
    {
        if (inRange(vk))
            m_down[size_t(vk)] = down;
    }

private:
    static bool inRange(int vk) { return vk >= 0 && vk < 256; }
    std::array<bool, 256> m_down {};
};

} // namespace ombrel::platform::fake
