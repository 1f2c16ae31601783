// SdlEventSource: translation of SDL events and the wait with a deadline.
#include "platform/sdl/SdlEventSource.h"

#include "platform/sdl/SdlKeys.h"
#include "runtime/EventLoop.h"

#include <algorithm>

namespace ombrel::platform::sdl {
namespace {

using runtime::InputEvent;
using runtime::InputKind;

// Windows numbers the buttons as bits: 1 left, 2 right, 4 middle.
int buttonCode(Uint8 sdlButton)
{
    switch (sdlButton) {
    case SDL_BUTTON_LEFT:
        return 1;
    case SDL_BUTTON_RIGHT:
        return 2;
    case SDL_BUTTON_MIDDLE:
        return 4;
    default:
        return 0;
    }
}

int heldButtons(Uint32 state)
{
    int mask = 0;
    if (state & SDL_BUTTON_LMASK)
        mask |= 1;
    if (state & SDL_BUTTON_RMASK)
        mask |= 2;
    if (state & SDL_BUTTON_MMASK)
        mask |= 4;
    return mask;
}

} // namespace

SdlEventSource::SdlEventSource()
    : m_events(SDL_INIT_EVENTS)
{
    const Uint32 first = SDL_RegisterEvents(1);
    if (first != static_cast<Uint32>(-1))
        m_wakeEvent = first;
}

std::optional<InputEvent> SdlEventSource::translate(const SDL_Event& event) const
{
    InputEvent input;
    switch (event.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        input.kind = event.type == SDL_KEYDOWN ? InputKind::KeyDown : InputKind::KeyUp;
        input.vk = vkFromSdl(event.key.keysym.sym, event.key.keysym.scancode);
        input.shift = shiftMask(static_cast<SDL_Keymod>(event.key.keysym.mod));
        if (input.vk == 0)
            return std::nullopt;
        return input;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        input.kind = event.type == SDL_MOUSEBUTTONDOWN ? InputKind::MouseDown : InputKind::MouseUp;
        input.button = buttonCode(event.button.button);
        if (input.button == 0)
            return std::nullopt;
        // Windows sees a double click, then a single click, then a double again: SDL counts on.
        input.clicks = event.button.clicks % 2 == 0 ? 2 : 1;
        input.x = event.button.x;
        input.y = event.button.y;
        input.shift = shiftMask(SDL_GetModState());
        return input;
    case SDL_MOUSEMOTION:
        input.kind = InputKind::MouseMove;
        input.button = heldButtons(event.motion.state);
        input.x = event.motion.x;
        input.y = event.motion.y;
        input.shift = shiftMask(SDL_GetModState());
        return input;
    case SDL_WINDOWEVENT:
        if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) {
            input.kind = InputKind::FocusLost;
            return input;
        }
        if (event.window.event == SDL_WINDOWEVENT_FOCUS_GAINED) {
            input.kind = InputKind::FocusGained;
            return input;
        }
        return std::nullopt;
    case SDL_QUIT:
        input.kind = InputKind::Quit;
        return input;
    default:
        return std::nullopt;
    }
}

void SdlEventSource::handle(runtime::EventLoop& loop, const SDL_Event& event)
{
    if (event.type == SDL_WINDOWEVENT
        && (event.window.event == SDL_WINDOWEVENT_EXPOSED
            || event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED)) {
        if (onExposed)
            onExposed();
        return;
    }
    if (auto input = translate(event))
        loop.postInput(std::move(*input));
}

void SdlEventSource::poll(runtime::EventLoop& loop)
{
    SDL_Event event;
    while (SDL_PollEvent(&event))
        handle(loop, event);
}

bool SdlEventSource::wait(runtime::EventLoop& loop, std::optional<int64_t> deadlineMs)
{
    SDL_Event event;
    int got = 0;
    if (!deadlineMs) {
        got = SDL_WaitEvent(&event);
    } else {
        const int64_t left = std::clamp<int64_t>(*deadlineMs - loop.now(), 0, 24 * 3600 * 1000);
        got = left == 0 ? SDL_PollEvent(&event) : SDL_WaitEventTimeout(&event, static_cast<int>(left));
    }
    if (got) {
        handle(loop, event);
        poll(loop);
    } else if (!deadlineMs) {
        // SDL could not wait (its events are not running): keep the loop from spinning.
        SDL_Delay(10);
    }
    // A real window can always send more input.
    return true;
}

void SdlEventSource::dropInput()
{
    SDL_PumpEvents();
    SDL_FlushEvents(SDL_KEYDOWN, SDL_TEXTINPUT);
    SDL_FlushEvents(SDL_MOUSEMOTION, SDL_MOUSEWHEEL);
    SDL_FlushEvents(SDL_JOYBUTTONDOWN, SDL_JOYBUTTONUP);
    SDL_FlushEvents(SDL_CONTROLLERBUTTONDOWN, SDL_CONTROLLERBUTTONUP);
}

void SdlEventSource::wake()
{
    if (m_wakeEvent == 0)
        return;
    SDL_Event event {};
    event.type = m_wakeEvent;
    SDL_PushEvent(&event);
}

} // namespace ombrel::platform::sdl
