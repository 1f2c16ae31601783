// FakeJoystick: stick 0 as the test or the replay script sets it; unplugged until it is first set.
#pragma once

#include "platform/Joystick.h"

namespace ombrel::platform::fake {

class FakeJoystick final : public Joystick {
public:
    bool read(JoyInfo& info) override
    {
        if (!m_plugged)
            return false;
        info = m_info;
        return true;
    }
    void set(const JoyInfo& info)
    {
        m_info = info;
        m_plugged = true;
    }
    void unplug() { m_plugged = false; }

private:
    JoyInfo m_info;
    bool m_plugged = false;
};

} // namespace ombrel::platform::fake
