// Tests of the SDL key to virtual-key translation, its reverse, and the Shift mask.
#include "platform/sdl/SdlKeys.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace ombrel::platform::sdl {
namespace {

struct KeyRow
{
    const char* name;
    SDL_Keycode key;
    SDL_Scancode scancode;
    int vk;
};

// What a US keyboard sends, and the code Windows gives for it.
#define US(key, scancode, vk)                                                                                \
    KeyRow                                                                                                   \
    {                                                                                                        \
        SDL_GetScancodeName(SDL_SCANCODE_##scancode), SDLK_##key, SDL_SCANCODE_##scancode, vk                \
    }
const KeyRow kUsKeys[] = {
    // clang-format off
    US(a, A, 65), US(z, Z, 90), US(0, 0, 48), US(5, 5, 53), US(9, 9, 57), US(F1, F1, 112), US(F12, F12, 123),
    US(F13, F13, 124), US(F24, F24, 135), US(LEFT, LEFT, 37), US(UP, UP, 38), US(RIGHT, RIGHT, 39),
    US(DOWN, DOWN, 40), US(HOME, HOME, 36), US(END, END, 35), US(PAGEUP, PAGEUP, 33),
    US(PAGEDOWN, PAGEDOWN, 34), US(INSERT, INSERT, 45), US(DELETE, DELETE, 46), US(TAB, TAB, 9),
    US(RETURN, RETURN, 13), US(KP_ENTER, KP_ENTER, 13), US(ESCAPE, ESCAPE, 27), US(SPACE, SPACE, 32),
    US(BACKSPACE, BACKSPACE, 8), US(LSHIFT, LSHIFT, 16), US(RSHIFT, RSHIFT, 16), US(LCTRL, LCTRL, 17),
    US(RCTRL, RCTRL, 17), US(LALT, LALT, 18), US(RALT, RALT, 18), US(KP_0, KP_0, 96), US(KP_9, KP_9, 105),
    US(KP_MULTIPLY, KP_MULTIPLY, 106), US(KP_PLUS, KP_PLUS, 107), US(KP_COMMA, KP_COMMA, 108),
    US(KP_MINUS, KP_MINUS, 109), US(KP_PERIOD, KP_PERIOD, 110), US(KP_DIVIDE, KP_DIVIDE, 111),
    US(SEMICOLON, SEMICOLON, 186), US(EQUALS, EQUALS, 187), US(COMMA, COMMA, 188), US(MINUS, MINUS, 189),
    US(PERIOD, PERIOD, 190), US(SLASH, SLASH, 191), US(BACKQUOTE, GRAVE, 192),
    US(LEFTBRACKET, LEFTBRACKET, 219), US(BACKSLASH, BACKSLASH, 220), US(RIGHTBRACKET, RIGHTBRACKET, 221),
    US(QUOTE, APOSTROPHE, 222), US(PAUSE, PAUSE, 19), US(CAPSLOCK, CAPSLOCK, 20),
    US(NUMLOCKCLEAR, NUMLOCKCLEAR, 144), US(SCROLLLOCK, SCROLLLOCK, 145), US(PRINTSCREEN, PRINTSCREEN, 44),
    // clang-format on
};
#undef US

// Keys whose codes are the same on every layout come from the position, letters and punctuation from
// the layout; a character without a virtual key falls back to the US position.
TEST(SdlKeys, OtherLayouts)
{
    const KeyRow rows[] = {
        { "AzertyQAtUsA", SDLK_q, SDL_SCANCODE_A, 'Q' },
        { "AzertyAmpersandOnDigit1", SDLK_AMPERSAND, SDL_SCANCODE_1, '1' },
        { "AzertyUnknownPunctuation", SDLK_RIGHTPAREN, SDL_SCANCODE_MINUS, 189 },
        { "CyrillicLetterAtUsF", 0x0430, SDL_SCANCODE_F, 'F' },
        { "DvorakSlashAtUsLeftBracket", SDLK_SLASH, SDL_SCANCODE_LEFTBRACKET, 191 },
        // An encoder's keypad key reads the same whatever the layout calls it.
        { "KeypadWithOddKeycode", SDLK_a, SDL_SCANCODE_KP_8, 104 },
        { "ArrowWithOddKeycode", SDLK_z, SDL_SCANCODE_UP, 38 },
        { "UnknownKey", SDLK_UNKNOWN, SDL_SCANCODE_UNKNOWN, 0 },
        { "MediaKey", SDLK_AUDIOPLAY, SDL_SCANCODE_AUDIOPLAY, 0 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(vkFromSdl(row.key, row.scancode), row.vk);
    }
}

// Injection presses the key at the position that gives back the same code on a US layout: the reverse
// must agree with the forward table for every code (for keys with two places, the main one).
TEST(SdlKeys, UsKeyboardGivesWindowsCodesAndTheReverseAgrees)
{
    for (const auto& row : kUsKeys) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(vkFromSdl(row.key, row.scancode), row.vk);
        SDL_Scancode scancode = scancodeFromVk(row.vk);
        ASSERT_NE(scancode, SDL_SCANCODE_UNKNOWN);
        EXPECT_EQ(vkFromSdl(SDLK_UNKNOWN, scancode), row.vk);
    }
    const std::pair<int, SDL_Scancode> reverse[] = { { 13, SDL_SCANCODE_RETURN }, { 16, SDL_SCANCODE_LSHIFT },
        { 161, SDL_SCANCODE_RSHIFT }, { 165, SDL_SCANCODE_RALT }, { 0, SDL_SCANCODE_UNKNOWN },
        { -5, SDL_SCANCODE_UNKNOWN }, { 100000, SDL_SCANCODE_UNKNOWN } };
    for (const auto& [vk, scancode] : reverse)
        EXPECT_EQ(scancodeFromVk(vk), scancode) << vk;
}

TEST(SdlKeys, ShiftMaskKeepsShiftCtrlAltAndIgnoresLocks)
{
    const std::pair<int, int> rows[]
        = { { KMOD_NONE, 0 }, { KMOD_LSHIFT, 1 }, { KMOD_RSHIFT, 1 }, { KMOD_RCTRL, 2 }, { KMOD_LALT, 4 },
              { KMOD_LSHIFT | KMOD_RCTRL | KMOD_RALT, 7 }, { KMOD_NUM | KMOD_CAPS | KMOD_GUI, 0 } };
    for (const auto& [mod, mask] : rows)
        EXPECT_EQ(shiftMask(static_cast<SDL_Keymod>(mod)), mask) << mod;
}

} // namespace
} // namespace ombrel::platform::sdl
