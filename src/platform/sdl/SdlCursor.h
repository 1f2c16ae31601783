// SdlCursor: the mouse pointer's place on the screen, read and set through SDL.
#pragma once

#include "platform/Cursor.h"
#include "runtime/Trace.h"

namespace ombrel::platform::sdl {

class SdlCursor final : public Cursor {
public:
    // Each move is traced as the replay's cursor is, so a real run's trace reads the same.
    explicit SdlCursor(runtime::Trace& trace)
        : m_trace(trace)
    {
    }
    CursorPos position() override;
    // Places the pointer; a place past the screen's edge leaves it at the edge, as the system does.
    void setPosition(int x, int y) override;

private:
    runtime::Trace& m_trace;
};

} // namespace ombrel::platform::sdl
