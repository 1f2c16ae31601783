// SdlKeys: the translation tables between SDL keys and Windows virtual-key codes.
#include "platform/sdl/SdlKeys.h"

#include <array>

namespace ombrel::platform::sdl {
namespace {

struct ScanVk
{
    SDL_Scancode scancode;
    int vk;
};

// Keys that mean the same on every layout, read from their position.
constexpr std::array kFixedKeys = {
    ScanVk { SDL_SCANCODE_BACKSPACE, 8 },
    ScanVk { SDL_SCANCODE_TAB, 9 },
    ScanVk { SDL_SCANCODE_CLEAR, 12 },
    ScanVk { SDL_SCANCODE_RETURN, 13 },
    ScanVk { SDL_SCANCODE_RETURN2, 13 },
    ScanVk { SDL_SCANCODE_KP_ENTER, 13 },
    ScanVk { SDL_SCANCODE_LSHIFT, 16 },
    ScanVk { SDL_SCANCODE_RSHIFT, 16 },
    ScanVk { SDL_SCANCODE_LCTRL, 17 },
    ScanVk { SDL_SCANCODE_RCTRL, 17 },
    ScanVk { SDL_SCANCODE_LALT, 18 },
    ScanVk { SDL_SCANCODE_RALT, 18 },
    ScanVk { SDL_SCANCODE_PAUSE, 19 },
    ScanVk { SDL_SCANCODE_CAPSLOCK, 20 },
    ScanVk { SDL_SCANCODE_ESCAPE, 27 },
    ScanVk { SDL_SCANCODE_SPACE, 32 },
    ScanVk { SDL_SCANCODE_PAGEUP, 33 },
    ScanVk { SDL_SCANCODE_PAGEDOWN, 34 },
    ScanVk { SDL_SCANCODE_END, 35 },
    ScanVk { SDL_SCANCODE_HOME, 36 },
    ScanVk { SDL_SCANCODE_LEFT, 37 },
    ScanVk { SDL_SCANCODE_UP, 38 },
    ScanVk { SDL_SCANCODE_RIGHT, 39 },
    ScanVk { SDL_SCANCODE_DOWN, 40 },
    ScanVk { SDL_SCANCODE_PRINTSCREEN, 44 },
    ScanVk { SDL_SCANCODE_INSERT, 45 },
    ScanVk { SDL_SCANCODE_DELETE, 46 },
    ScanVk { SDL_SCANCODE_LGUI, 91 },
    ScanVk { SDL_SCANCODE_RGUI, 92 },
    ScanVk { SDL_SCANCODE_APPLICATION, 93 },
    ScanVk { SDL_SCANCODE_KP_0, 96 },
    ScanVk { SDL_SCANCODE_KP_1, 97 },
    ScanVk { SDL_SCANCODE_KP_2, 98 },
    ScanVk { SDL_SCANCODE_KP_3, 99 },
    ScanVk { SDL_SCANCODE_KP_4, 100 },
    ScanVk { SDL_SCANCODE_KP_5, 101 },
    ScanVk { SDL_SCANCODE_KP_6, 102 },
    ScanVk { SDL_SCANCODE_KP_7, 103 },
    ScanVk { SDL_SCANCODE_KP_8, 104 },
    ScanVk { SDL_SCANCODE_KP_9, 105 },
    ScanVk { SDL_SCANCODE_KP_MULTIPLY, 106 },
    ScanVk { SDL_SCANCODE_KP_PLUS, 107 },
    ScanVk { SDL_SCANCODE_KP_COMMA, 108 },
    ScanVk { SDL_SCANCODE_KP_MINUS, 109 },
    ScanVk { SDL_SCANCODE_KP_PERIOD, 110 },
    ScanVk { SDL_SCANCODE_KP_DECIMAL, 110 },
    ScanVk { SDL_SCANCODE_KP_DIVIDE, 111 },
    ScanVk { SDL_SCANCODE_NUMLOCKCLEAR, 144 },
    ScanVk { SDL_SCANCODE_SCROLLLOCK, 145 },
};

// Letters, digits and punctuation at their US positions: the fallback of a layout whose character
// has no virtual key, and the keys that an injected code presses.
constexpr std::array kUsKeys = {
    ScanVk { SDL_SCANCODE_0, 48 },
    ScanVk { SDL_SCANCODE_1, 49 },
    ScanVk { SDL_SCANCODE_2, 50 },
    ScanVk { SDL_SCANCODE_3, 51 },
    ScanVk { SDL_SCANCODE_4, 52 },
    ScanVk { SDL_SCANCODE_5, 53 },
    ScanVk { SDL_SCANCODE_6, 54 },
    ScanVk { SDL_SCANCODE_7, 55 },
    ScanVk { SDL_SCANCODE_8, 56 },
    ScanVk { SDL_SCANCODE_9, 57 },
    ScanVk { SDL_SCANCODE_SEMICOLON, 186 },
    ScanVk { SDL_SCANCODE_EQUALS, 187 },
    ScanVk { SDL_SCANCODE_COMMA, 188 },
    ScanVk { SDL_SCANCODE_MINUS, 189 },
    ScanVk { SDL_SCANCODE_PERIOD, 190 },
    ScanVk { SDL_SCANCODE_SLASH, 191 },
    ScanVk { SDL_SCANCODE_GRAVE, 192 },
    ScanVk { SDL_SCANCODE_LEFTBRACKET, 219 },
    ScanVk { SDL_SCANCODE_BACKSLASH, 220 },
    ScanVk { SDL_SCANCODE_RIGHTBRACKET, 221 },
    ScanVk { SDL_SCANCODE_APOSTROPHE, 222 },
    ScanVk { SDL_SCANCODE_NONUSBACKSLASH, 226 },
};

// The virtual key of a character the layout puts on a key (punctuation only; letters and digits
// are computed).
int vkFromCharacter(SDL_Keycode key)
{
    if (key >= SDLK_a && key <= SDLK_z)
        return 'A' + (key - SDLK_a);
    if (key >= SDLK_0 && key <= SDLK_9)
        return '0' + (key - SDLK_0);
    switch (key) {
    case SDLK_SEMICOLON:
        return 186;
    case SDLK_EQUALS:
        return 187;
    case SDLK_COMMA:
        return 188;
    case SDLK_MINUS:
        return 189;
    case SDLK_PERIOD:
        return 190;
    case SDLK_SLASH:
        return 191;
    case SDLK_BACKQUOTE:
        return 192;
    case SDLK_LEFTBRACKET:
        return 219;
    case SDLK_BACKSLASH:
        return 220;
    case SDLK_RIGHTBRACKET:
        return 221;
    case SDLK_QUOTE:
        return 222;
    default:
        return 0;
    }
}

} // namespace

int vkFromSdl(SDL_Keycode key, SDL_Scancode scancode)
{
    if (scancode >= SDL_SCANCODE_F1 && scancode <= SDL_SCANCODE_F12)
        return 112 + (scancode - SDL_SCANCODE_F1);
    if (scancode >= SDL_SCANCODE_F13 && scancode <= SDL_SCANCODE_F24)
        return 124 + (scancode - SDL_SCANCODE_F13);
    for (const auto& row : kFixedKeys) {
        if (row.scancode == scancode)
            return row.vk;
    }
    if (int vk = vkFromCharacter(key))
        return vk;
    if (scancode >= SDL_SCANCODE_A && scancode <= SDL_SCANCODE_Z)
        return 'A' + (scancode - SDL_SCANCODE_A);
    for (const auto& row : kUsKeys) {
        if (row.scancode == scancode)
            return row.vk;
    }
    return 0;
}

int shiftMask(SDL_Keymod mod)
{
    int mask = 0;
    if (mod & KMOD_SHIFT)
        mask |= 1;
    if (mod & KMOD_CTRL)
        mask |= 2;
    if (mod & KMOD_ALT)
        mask |= 4;
    return mask;
}

SDL_Scancode scancodeFromVk(int vk)
{
    if (vk >= 'A' && vk <= 'Z')
        return static_cast<SDL_Scancode>(SDL_SCANCODE_A + (vk - 'A'));
    if (vk >= 112 && vk <= 123)
        return static_cast<SDL_Scancode>(SDL_SCANCODE_F1 + (vk - 112));
    if (vk >= 124 && vk <= 135)
        return static_cast<SDL_Scancode>(SDL_SCANCODE_F13 + (vk - 124));
    switch (vk) {
    case 160:
        return SDL_SCANCODE_LSHIFT;
    case 161:
        return SDL_SCANCODE_RSHIFT;
    case 162:
        return SDL_SCANCODE_LCTRL;
    case 163:
        return SDL_SCANCODE_RCTRL;
    case 164:
        return SDL_SCANCODE_LALT;
    case 165:
        return SDL_SCANCODE_RALT;
    default:
        break;
    }
    // The first row of a code is its main key: Enter before keypad Enter, left Shift before right.
    for (const auto& row : kFixedKeys) {
        if (row.vk == vk)
            return row.scancode;
    }
    for (const auto& row : kUsKeys) {
        if (row.vk == vk)
            return row.scancode;
    }
    return SDL_SCANCODE_UNKNOWN;
}

} // namespace ombrel::platform::sdl
