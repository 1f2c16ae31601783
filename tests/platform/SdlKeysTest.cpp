// Tests of the SDL key to virtual-key translation, its reverse, and the Shift mask.
#include "platform/sdl/SdlKeys.h"

#include <gtest/gtest.h>

#include <string>

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
constexpr KeyRow kUsKeys[] = {
    { "A", SDLK_a, SDL_SCANCODE_A, 65 },
    { "Z", SDLK_z, SDL_SCANCODE_Z, 90 },
    { "0", SDLK_0, SDL_SCANCODE_0, 48 },
    { "5", SDLK_5, SDL_SCANCODE_5, 53 },
    { "9", SDLK_9, SDL_SCANCODE_9, 57 },
    { "F1", SDLK_F1, SDL_SCANCODE_F1, 112 },
    { "F12", SDLK_F12, SDL_SCANCODE_F12, 123 },
    { "F13", SDLK_F13, SDL_SCANCODE_F13, 124 },
    { "F24", SDLK_F24, SDL_SCANCODE_F24, 135 },
    { "Left", SDLK_LEFT, SDL_SCANCODE_LEFT, 37 },
    { "Up", SDLK_UP, SDL_SCANCODE_UP, 38 },
    { "Right", SDLK_RIGHT, SDL_SCANCODE_RIGHT, 39 },
    { "Down", SDLK_DOWN, SDL_SCANCODE_DOWN, 40 },
    { "Home", SDLK_HOME, SDL_SCANCODE_HOME, 36 },
    { "End", SDLK_END, SDL_SCANCODE_END, 35 },
    { "PageUp", SDLK_PAGEUP, SDL_SCANCODE_PAGEUP, 33 },
    { "PageDown", SDLK_PAGEDOWN, SDL_SCANCODE_PAGEDOWN, 34 },
    { "Insert", SDLK_INSERT, SDL_SCANCODE_INSERT, 45 },
    { "Delete", SDLK_DELETE, SDL_SCANCODE_DELETE, 46 },
    { "Tab", SDLK_TAB, SDL_SCANCODE_TAB, 9 },
    { "Enter", SDLK_RETURN, SDL_SCANCODE_RETURN, 13 },
    { "KeypadEnter", SDLK_KP_ENTER, SDL_SCANCODE_KP_ENTER, 13 },
    { "Escape", SDLK_ESCAPE, SDL_SCANCODE_ESCAPE, 27 },
    { "Space", SDLK_SPACE, SDL_SCANCODE_SPACE, 32 },
    { "Backspace", SDLK_BACKSPACE, SDL_SCANCODE_BACKSPACE, 8 },
    { "LeftShift", SDLK_LSHIFT, SDL_SCANCODE_LSHIFT, 16 },
    { "RightShift", SDLK_RSHIFT, SDL_SCANCODE_RSHIFT, 16 },
    { "LeftCtrl", SDLK_LCTRL, SDL_SCANCODE_LCTRL, 17 },
    { "RightCtrl", SDLK_RCTRL, SDL_SCANCODE_RCTRL, 17 },
    { "LeftAlt", SDLK_LALT, SDL_SCANCODE_LALT, 18 },
    { "RightAlt", SDLK_RALT, SDL_SCANCODE_RALT, 18 },
    { "Keypad0", SDLK_KP_0, SDL_SCANCODE_KP_0, 96 },
    { "Keypad9", SDLK_KP_9, SDL_SCANCODE_KP_9, 105 },
    { "KeypadMultiply", SDLK_KP_MULTIPLY, SDL_SCANCODE_KP_MULTIPLY, 106 },
    { "KeypadPlus", SDLK_KP_PLUS, SDL_SCANCODE_KP_PLUS, 107 },
    { "KeypadSeparator", SDLK_KP_COMMA, SDL_SCANCODE_KP_COMMA, 108 },
    { "KeypadMinus", SDLK_KP_MINUS, SDL_SCANCODE_KP_MINUS, 109 },
    { "KeypadPeriod", SDLK_KP_PERIOD, SDL_SCANCODE_KP_PERIOD, 110 },
    { "KeypadDivide", SDLK_KP_DIVIDE, SDL_SCANCODE_KP_DIVIDE, 111 },
    { "Semicolon", SDLK_SEMICOLON, SDL_SCANCODE_SEMICOLON, 186 },
    { "Equals", SDLK_EQUALS, SDL_SCANCODE_EQUALS, 187 },
    { "Comma", SDLK_COMMA, SDL_SCANCODE_COMMA, 188 },
    { "Minus", SDLK_MINUS, SDL_SCANCODE_MINUS, 189 },
    { "Period", SDLK_PERIOD, SDL_SCANCODE_PERIOD, 190 },
    { "Slash", SDLK_SLASH, SDL_SCANCODE_SLASH, 191 },
    { "Backquote", SDLK_BACKQUOTE, SDL_SCANCODE_GRAVE, 192 },
    { "LeftBracket", SDLK_LEFTBRACKET, SDL_SCANCODE_LEFTBRACKET, 219 },
    { "Backslash", SDLK_BACKSLASH, SDL_SCANCODE_BACKSLASH, 220 },
    { "RightBracket", SDLK_RIGHTBRACKET, SDL_SCANCODE_RIGHTBRACKET, 221 },
    { "Quote", SDLK_QUOTE, SDL_SCANCODE_APOSTROPHE, 222 },
    { "Pause", SDLK_PAUSE, SDL_SCANCODE_PAUSE, 19 },
    { "CapsLock", SDLK_CAPSLOCK, SDL_SCANCODE_CAPSLOCK, 20 },
    { "NumLock", SDLK_NUMLOCKCLEAR, SDL_SCANCODE_NUMLOCKCLEAR, 144 },
    { "ScrollLock", SDLK_SCROLLLOCK, SDL_SCANCODE_SCROLLLOCK, 145 },
    { "PrintScreen", SDLK_PRINTSCREEN, SDL_SCANCODE_PRINTSCREEN, 44 },
};

TEST(SdlKeys, UsKeyboardGivesWindowsCodes)
{
    for (const auto& row : kUsKeys) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(vkFromSdl(row.key, row.scancode), row.vk);
    }
}

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
TEST(SdlKeys, ReverseAgreesWithForward)
{
    for (const auto& row : kUsKeys) {
        SCOPED_TRACE(row.name);
        SDL_Scancode scancode = scancodeFromVk(row.vk);
        ASSERT_NE(scancode, SDL_SCANCODE_UNKNOWN);
        EXPECT_EQ(vkFromSdl(SDLK_UNKNOWN, scancode), row.vk);
    }
    EXPECT_EQ(scancodeFromVk(13), SDL_SCANCODE_RETURN);
    EXPECT_EQ(scancodeFromVk(16), SDL_SCANCODE_LSHIFT);
    EXPECT_EQ(scancodeFromVk(161), SDL_SCANCODE_RSHIFT);
    EXPECT_EQ(scancodeFromVk(165), SDL_SCANCODE_RALT);
    EXPECT_EQ(scancodeFromVk(0), SDL_SCANCODE_UNKNOWN);
    EXPECT_EQ(scancodeFromVk(-5), SDL_SCANCODE_UNKNOWN);
    EXPECT_EQ(scancodeFromVk(100000), SDL_SCANCODE_UNKNOWN);
}

TEST(SdlKeys, ShiftMask)
{
    const struct
    {
        const char* name;
        int mod;
        int mask;
    } rows[] = {
        { "none", KMOD_NONE, 0 },
        { "leftShift", KMOD_LSHIFT, 1 },
        { "rightShift", KMOD_RSHIFT, 1 },
        { "rightCtrl", KMOD_RCTRL, 2 },
        { "leftAlt", KMOD_LALT, 4 },
        { "all", KMOD_LSHIFT | KMOD_RCTRL | KMOD_RALT, 7 },
        { "locksIgnored", KMOD_NUM | KMOD_CAPS | KMOD_GUI, 0 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(shiftMask(static_cast<SDL_Keymod>(row.mod)), row.mask);
    }
}

} // namespace
} // namespace ombrel::platform::sdl
