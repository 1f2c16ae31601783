// Tests of SDL events turned into the runtime's input, and of waking a waiting loop.
#include "platform/sdl/SdlEventSource.h"

#include "platform/sdl/RealClock.h"
#include "runtime/EventLoop.h"

#include <gtest/gtest.h>

#include <thread>
#include <tuple>
#include <vector>

namespace ombrel::platform::sdl {
namespace {

using runtime::InputEvent;
using runtime::InputKind;

SDL_Event keyEvent(Uint32 type, SDL_Keycode key, SDL_Scancode scancode, Uint16 mod, bool repeat = false)
{
    SDL_Event event {};
    event.type = type;
    event.key.keysym.sym = key;
    event.key.keysym.scancode = scancode;
    event.key.keysym.mod = mod;
    event.key.repeat = repeat ? 1 : 0;
    return event;
}

SDL_Event buttonEvent(Uint32 type, Uint8 button, Uint8 clicks, int x, int y)
{
    SDL_Event event {};
    event.type = type;
    event.button.button = button;
    event.button.clicks = clicks;
    event.button.x = x;
    event.button.y = y;
    return event;
}

SDL_Event windowEvent(Uint8 what)
{
    SDL_Event event {};
    event.type = SDL_WINDOWEVENT;
    event.window.event = what;
    return event;
}

TEST(SdlEventSource, TranslatesEventsIntoRuntimeInput)
{
    SdlEventSource source;
    SDL_Event motion {}, quit {}, text {};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.x = 300;
    motion.motion.y = 200;
    motion.motion.state = SDL_BUTTON_LMASK | SDL_BUTTON_MMASK;
    quit.type = SDL_QUIT;
    text.type = SDL_TEXTINPUT;
    const struct
    {
        const char* name;
        SDL_Event event;
        InputKind kind;
        int vk, shift, button, clicks, x, y;
    } rows[] = {
        { "keyDown", keyEvent(SDL_KEYDOWN, SDLK_DOWN, SDL_SCANCODE_DOWN, KMOD_LSHIFT), InputKind::KeyDown, 40,
            1, 1, 1, 0, 0 },
        { "repeatIsAnotherDown", keyEvent(SDL_KEYDOWN, SDLK_DOWN, SDL_SCANCODE_DOWN, KMOD_NONE, true),
            InputKind::KeyDown, 40, 0, 1, 1, 0, 0 },
        { "keyUp", keyEvent(SDL_KEYUP, SDLK_1, SDL_SCANCODE_1, KMOD_RCTRL | KMOD_LALT), InputKind::KeyUp, 49,
            6, 1, 1, 0, 0 },
        { "leftDown", buttonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 1, 10, 20), InputKind::MouseDown, 0,
            0, 1, 1, 10, 20 },
        { "secondPressIsDouble", buttonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 2, 10, 20),
            InputKind::MouseDown, 0, 0, 1, 2, 10, 20 },
        { "thirdPressIsSingle", buttonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 3, 10, 20),
            InputKind::MouseDown, 0, 0, 1, 1, 10, 20 },
        { "rightUp", buttonEvent(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT, 1, 5, 6), InputKind::MouseUp, 0, 0, 2,
            1, 5, 6 },
        { "motionWithHeldButtons", motion, InputKind::MouseMove, 0, 0, 5, 1, 300, 200 },
        { "focusLost", windowEvent(SDL_WINDOWEVENT_FOCUS_LOST), InputKind::FocusLost, 0, 0, 1, 1, 0, 0 },
        { "focusGained", windowEvent(SDL_WINDOWEVENT_FOCUS_GAINED), InputKind::FocusGained, 0, 0, 1, 1, 0,
            0 },
        { "quit", quit, InputKind::Quit, 0, 0, 1, 1, 0, 0 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        auto input = source.translate(row.event);
        ASSERT_TRUE(input);
        const bool key = row.kind == InputKind::KeyDown || row.kind == InputKind::KeyUp;
        EXPECT_EQ(std::tuple(input->kind, input->vk, key ? input->shift : 0, input->button, input->clicks,
                      input->x, input->y),
            std::tuple(row.kind, row.vk, row.shift, row.button, row.clicks, row.x, row.y));
    }
    for (const SDL_Event& ignored : { text, keyEvent(SDL_KEYDOWN, SDLK_AUDIOPLAY, SDL_SCANCODE_AUDIOPLAY, 0),
             buttonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_X1, 1, 0, 0), windowEvent(SDL_WINDOWEVENT_MOVED) })
        EXPECT_FALSE(source.translate(ignored)) << ignored.type;
}

// After a game gave the keyboard back, what was typed or clicked meanwhile is gone and the window's own
// events are kept in their order; a task posted from another thread ends a wait without a deadline.
TEST(SdlEventSource, DroppedInputKeepsWindowEventsAndPostedTasksWake)
{
    SdlEventSource source;
    RealClock clock;
    runtime::EventLoop loop { clock };
    loop.setSource(&source);
    source.poll(loop); // drop whatever an earlier test left in SDL's queue
    std::vector<InputKind> seen;
    loop.setInputHandler([&](const InputEvent& e) { seen.push_back(e.kind); });
    SDL_Event joyButton {}, wheel {}, quit {};
    joyButton.type = SDL_JOYBUTTONDOWN;
    wheel.type = SDL_MOUSEWHEEL;
    quit.type = SDL_QUIT;
    for (SDL_Event event :
        { windowEvent(SDL_WINDOWEVENT_FOCUS_LOST), keyEvent(SDL_KEYDOWN, SDLK_ESCAPE, SDL_SCANCODE_ESCAPE, 0),
            buttonEvent(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 1, 3, 4), joyButton, wheel,
            windowEvent(SDL_WINDOWEVENT_FOCUS_GAINED), quit })
        SDL_PushEvent(&event);
    source.dropInput();
    SDL_Event down = keyEvent(SDL_KEYDOWN, SDLK_DOWN, SDL_SCANCODE_DOWN, 0);
    SDL_PushEvent(&down); // after the drop: served as ever
    loop.doEvents();
    EXPECT_EQ(seen,
        (std::vector<InputKind> {
            InputKind::FocusLost, InputKind::FocusGained, InputKind::Quit, InputKind::KeyDown }));

    bool ran = false;
    std::thread([&] { loop.postTask([&] { ran = true; }); }).join();
    EXPECT_TRUE(source.wait(loop, std::nullopt));
    loop.doEvents();
    EXPECT_TRUE(ran);
}

} // namespace
} // namespace ombrel::platform::sdl
