// SdlJoystick: stick 0 through SDL's joystick subsystem, whether or not the window has the focus.
#pragma once

#include "platform/Joystick.h"
#include "platform/sdl/SdlHandles.h"

#include <memory>

namespace ombrel::platform::sdl {

// Each read takes the stick's state fresh from the driver, so it does not depend on anyone pumping
// SDL's event queue. SDL's joystick events are switched off: the poll timers read the state, so events
// would only wake the loop for nothing, and with them on SDL's event pump updates every stick on each
// turn and its wait polls instead of sleeping while a stick is plugged in. A stick plugged in after start is opened at the next read; one pulled out makes
// reads false until a stick (the new stick 0) is there again.
//
// Axes 0 to 5 go to x, y, z, r, u, v, each shifted from -32768..32767 to 0..65535; axes the stick lacks
// stay at 32767. Buttons 1 to 32 go to bits 0 to 31. A stick without axes (a pad whose cross is a hat)
// moves x and y with its first hat, to the ends of the range.
class SdlJoystick final : public Joystick
{
public:
    SdlJoystick();
    bool read(JoyInfo& info) override;

private:
    struct JoystickClose
    {
        void operator()(SDL_Joystick* stick) const { SDL_JoystickClose(stick); }
    };
    SdlSubsystems m_subsystem;
    std::unique_ptr<SDL_Joystick, JoystickClose> m_stick;
};

} // namespace ombrel::platform::sdl
