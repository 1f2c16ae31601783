// SdlKeyState: whether a key is held, from SDL's keyboard state: the stand-in when no X display can
// be asked.
#pragma once

#include "platform/KeyState.h"
#include "platform/sdl/SdlHandles.h"

namespace ombrel::platform::sdl {

// SDL only knows the keys its own window was given, so a key pressed while a game has the focus is
// not seen: the exit key then works from the browser's window only. Better than no key at all, for a
// session without X (a console, a bare Wayland compositor).
class SdlKeyState final : public KeyState
{
public:
    SdlKeyState();
    bool isDown(int vk) override;

    // Whether any key of the state (SDL's array of scancodes, count long) stands for vk, through the
    // same translation as key events: the layout's letters and digits, either Shift for 16. 160 to
    // 165 name the left and right Shift, Ctrl and Alt keys.
    static bool isDownIn(const Uint8* state, int count, int vk);

private:
    SdlSubsystems m_events;
};

} // namespace ombrel::platform::sdl
