// SdlKeys: SDL keys to Windows virtual-key codes and back; the only place that knows SDL's key names.
#pragma once

#include <SDL.h>

namespace ombrel::platform::sdl {

// The Windows virtual-key code of a key, or 0 when the key has none. Keys whose meaning does not
// depend on the keyboard layout (function keys, arrows, keypad, modifiers...) are read from the
// scancode, so a keyboard encoder gives the same codes on any layout. Letters, digits and
// punctuation follow the layout, as Windows does, and fall back to their US position when the layout
// gives a character that has no virtual key.
int vkFromSdl(SDL_Keycode key, SDL_Scancode scancode);

// The Shift mask of a key or mouse event: 1 Shift, 2 Ctrl, 4 Alt.
int shiftMask(SDL_Keymod mod);

// The key at the US position of a virtual-key code, or SDL_SCANCODE_UNKNOWN. Shift, Ctrl and Alt
// (16, 17, 18) give the left-hand keys; 160 to 165 name the left and right ones.
SDL_Scancode scancodeFromVk(int vk);

} // namespace ombrel::platform::sdl
