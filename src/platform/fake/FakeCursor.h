// FakeCursor: the mouse position; the program's moves of it are traced, the script's are not.
#pragma once

#include "platform/Cursor.h"
#include "runtime/Trace.h"

namespace ombrel::platform::fake {

// Trace line: "cursor <x> <y>" when the program moves the pointer.
class FakeCursor final : public Cursor {
public:
    explicit FakeCursor(runtime::Trace& trace)
        : m_trace(trace)
    {
    }
    CursorPos position() override { return m_pos; }
    void setPosition(int x, int y) override;
    // The player moved the mouse.
    void moveTo(int x, int y) { m_pos = { x, y }; }

private:
    runtime::Trace& m_trace;
    CursorPos m_pos;
};

} // namespace ombrel::platform::fake
