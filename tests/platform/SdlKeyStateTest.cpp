// Tests of reading held keys from SDL's keyboard array as virtual-key codes.
#include "platform/sdl/SdlKeyState.h"

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>

namespace ombrel::platform::sdl {
namespace {

TEST(SdlKeyState, HeldKeysAsVirtualKeys)
{
    // The key map of the dummy video driver is the US layout.
    SdlSubsystems video(SDL_INIT_VIDEO);
    ASSERT_TRUE(video.ok()) << SDL_GetError();
    struct Row
    {
        const char* name;
        std::initializer_list<SDL_Scancode> held;
        int vk;
        bool down;
    };
    const Row rows[] = {
        // clang-format off
        { "nothingHeld", {}, 27, false }, { "escape", { SDL_SCANCODE_ESCAPE }, 27, true },
        { "otherKeyHeld", { SDL_SCANCODE_ESCAPE }, 13, false },
        { "keypadEnterIsEnter", { SDL_SCANCODE_KP_ENTER }, 13, true },
        { "letter", { SDL_SCANCODE_A }, 'A', true }, { "digit", { SDL_SCANCODE_5 }, '5', true },
        { "eitherShiftIsShift", { SDL_SCANCODE_RSHIFT }, 16, true },
        { "rightShiftByItsOwnCode", { SDL_SCANCODE_RSHIFT }, 161, true },
        { "leftShiftIsNotRight", { SDL_SCANCODE_LSHIFT }, 161, false },
        { "leftCtrl", { SDL_SCANCODE_LCTRL, SDL_SCANCODE_X }, 162, true },
        { "oneOfTwo", { SDL_SCANCODE_LCTRL, SDL_SCANCODE_DOWN }, 40, true },
        { "functionKey", { SDL_SCANCODE_F5 }, 116, true }, { "noSuchCode", { SDL_SCANCODE_A }, 0, false },
        { "negativeCode", { SDL_SCANCODE_A }, -65, false },
        { "codeBeyondTheTable", { SDL_SCANCODE_A }, 70000, false },
        // clang-format on
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::array<Uint8, SDL_NUM_SCANCODES> state {};
        for (SDL_Scancode key : row.held)
            state[key] = 1;
        EXPECT_EQ(SdlKeyState::isDownIn(state.data(), static_cast<int>(state.size()), row.vk), row.down);
    }
    // A short array (an older SDL) is never read past its end.
    std::array<Uint8, 4> shortState { 1, 1, 1, 1 };
    EXPECT_FALSE(SdlKeyState::isDownIn(shortState.data(), 4, 165));
    EXPECT_FALSE(SdlKeyState::isDownIn(nullptr, 0, 27));
}

} // namespace
} // namespace ombrel::platform::sdl
