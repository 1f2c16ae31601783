// SdlCursor: global pointer position and warp.
#include "platform/sdl/SdlCursor.h"

#include <SDL.h>

#include <string>

namespace ombrel::platform::sdl {

CursorPos SdlCursor::position()
{
    int x = 0, y = 0;
    SDL_GetGlobalMouseState(&x, &y);
    return { x, y };
}

void SdlCursor::setPosition(int x, int y)
{
    m_trace.effect("cursor " + std::to_string(x) + " " + std::to_string(y));
    SDL_DisplayMode mode;
    if (SDL_GetCurrentDisplayMode(0, &mode) == 0) {
        x = x < 0 ? 0 : (x >= mode.w ? mode.w - 1 : x);
        y = y < 0 ? 0 : (y >= mode.h ? mode.h - 1 : y);
    }
    SDL_WarpMouseGlobal(x, y);
}

} // namespace ombrel::platform::sdl
