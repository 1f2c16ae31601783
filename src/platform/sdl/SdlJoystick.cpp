// SdlJoystick: opening stick 0 as it comes and goes, and its state in the joystick record.
#include "platform/sdl/SdlJoystick.h"

#include <algorithm>

namespace ombrel::platform::sdl {

namespace {
// The joystick subsystem reads the hint when it starts, so it is set before.
uint32_t joystickSubsystem()
{
    // A game owns the focus while the exit button is watched, and the stick must still be read.
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    return SDL_INIT_JOYSTICK;
}

uint32_t axisValue(SDL_Joystick* stick, int axis)
{
    if (axis >= SDL_JoystickNumAxes(stick))
        return 32767;
    return static_cast<uint32_t>(SDL_JoystickGetAxis(stick, axis) + 32768);
}
}

SdlJoystick::SdlJoystick()
    : m_subsystem(joystickSubsystem())
{
    if (m_subsystem.ok())
        SDL_JoystickEventState(SDL_IGNORE);
}

bool SdlJoystick::read(JoyInfo& info)
{
    if (!m_subsystem.ok())
        return false;
    SDL_JoystickUpdate();
    if (m_stick && !SDL_JoystickGetAttached(m_stick.get()))
        m_stick.reset();
    if (!m_stick) {
        if (SDL_NumJoysticks() < 1)
            return false;
        m_stick.reset(SDL_JoystickOpen(0));
        if (!m_stick)
            return false;
        // The state of a stick just opened arrives with the next update.
        SDL_JoystickUpdate();
    }
    SDL_Joystick* stick = m_stick.get();
    info.x = axisValue(stick, 0);
    info.y = axisValue(stick, 1);
    info.z = axisValue(stick, 2);
    info.r = axisValue(stick, 3);
    info.u = axisValue(stick, 4);
    info.v = axisValue(stick, 5);
    if (SDL_JoystickNumAxes(stick) < 2 && SDL_JoystickNumHats(stick) > 0) {
        Uint8 hat = SDL_JoystickGetHat(stick, 0);
        info.x = (hat & SDL_HAT_LEFT) ? 0 : (hat & SDL_HAT_RIGHT) ? 65535 : 32767;
        info.y = (hat & SDL_HAT_UP) ? 0 : (hat & SDL_HAT_DOWN) ? 65535 : 32767;
    }
    uint32_t buttons = 0;
    int count = std::min(SDL_JoystickNumButtons(stick), 32);
    for (int i = 0; i < count; ++i)
        if (SDL_JoystickGetButton(stick, i))
            buttons |= 1u << i;
    info.buttons = buttons;
    return true;
}

} // namespace ombrel::platform::sdl
