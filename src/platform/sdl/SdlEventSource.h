// SdlEventSource: SDL's window, key and mouse events as the runtime's input, and waiting for them.
#pragma once

#include "platform/sdl/SdlHandles.h"
#include "runtime/EventSource.h"
#include "runtime/InputEvent.h"

#include <functional>
#include <optional>

namespace ombrel::platform::sdl {

// The loop's source in a real run. Keys become Windows virtual-key codes (a held key repeats as
// further key downs, as on Windows), mouse positions are window pixels, the window's loss and return
// of the keyboard focus become FocusLost and FocusGained, closing it becomes Quit.
class SdlEventSource final : public runtime::EventSource
{
public:
    SdlEventSource();
    SdlEventSource(const SdlEventSource&) = delete;
    SdlEventSource& operator=(const SdlEventSource&) = delete;

    void poll(runtime::EventLoop& loop) override;
    bool wait(runtime::EventLoop& loop, std::optional<int64_t> deadlineMs) override;
    void wake() override;

    // Throws away the key, mouse and joystick-button events that gathered in the window's queue,
    // including those the window system still holds, and keeps the window's own events (focus,
    // exposure, closing). Called when a game that had the keyboard gives it back, so nothing typed
    // into the game reaches the browser; a key still held then goes on repeating into the browser.
    void dropInput();

    // Called when the window's content was lost (uncovered, resized): the renderer shows its last
    // frame again.
    std::function<void()> onExposed;

    // The input an SDL event stands for, if any (wake-ups, text and unknown keys stand for none).
    std::optional<runtime::InputEvent> translate(const SDL_Event& event) const;

private:
    void handle(runtime::EventLoop& loop, const SDL_Event& event);

    SdlSubsystems m_events;
    Uint32 m_wakeEvent = 0;
};

} // namespace ombrel::platform::sdl
