// SdlKeyState: SDL's keyboard array read through the key translation.
#include "platform/sdl/SdlKeyState.h"

#include "platform/sdl/SdlKeys.h"

namespace ombrel::platform::sdl {

SdlKeyState::SdlKeyState()
    : m_events(SDL_INIT_EVENTS)
{
}

bool SdlKeyState::isDown(int vk)
{
    // NOTE: the pump only moves pending events into SDL's queue, where the loop still finds them; it
    // brings the array up to date between two turns of the loop.
    SDL_PumpEvents();
    int count = 0;
    const Uint8* state = SDL_GetKeyboardState(&count);
    return isDownIn(state, count, vk);
}

bool SdlKeyState::isDownIn(const Uint8* state, int count, int vk)
{
    if (state == nullptr || vk <= 0)
        return false;
    if (vk >= 160 && vk <= 165) {
        const SDL_Scancode side = scancodeFromVk(vk);
        return static_cast<int>(side) < count && state[side] != 0;
    }
    for (int i = 0; i < count; ++i) {
        if (state[i] == 0)
            continue;
        const auto scancode = static_cast<SDL_Scancode>(i);
        if (vkFromSdl(SDL_GetKeyFromScancode(scancode), scancode) == vk)
            return true;
    }
    return false;
}

} // namespace ombrel::platform::sdl
