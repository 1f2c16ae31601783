// Joystick: stick 0 as joyGetPosEx reports it: axes 0..65535 (32767 centred), buttons as a word with
// bit 0 for button 1. Read whether or not the window has the system's focus.
#pragma once

#include <cstdint>

namespace ombrel::platform {

struct JoyInfo {
    uint32_t x = 32767;
    uint32_t y = 32767;
    uint32_t z = 32767;
    uint32_t r = 32767;
    uint32_t u = 32767;
    uint32_t v = 32767;
    uint32_t buttons = 0;
};

class Joystick {
public:
    virtual ~Joystick() = default;
    // False when no stick is plugged in (info is then left as it was).
    virtual bool read(JoyInfo& info) = 0;
};

} // namespace ombrel::platform
