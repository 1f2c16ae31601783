// FakeDisplayMode: a desktop of a given size whose mode changes are recorded and, when they succeed,
// become its size.
#pragma once

#include "platform/DisplayMode.h"
#include "runtime/Trace.h"

#include <string>

namespace ombrel::platform::fake {

// "<w>x<h> bits <b> freq <f>": a mode as the trace lines of display changes show it, in a replay and in
// a real run alike.
std::string modeText(int width, int height, int bits, int freq);

// Trace lines: "display <w>x<h> bits <b> freq <f>" for every change asked for, "display restore <w>x<h>
// bits <b> freq <f>" for the mode the program gives back.
class FakeDisplayMode final : public DisplayMode {
public:
    explicit FakeDisplayMode(runtime::Trace& trace, runtime::PixelSize desktop = { 640, 480 })
        : m_trace(trace)
        , m_size(desktop)
        , m_startSize(desktop)
    {
    }
    runtime::PixelSize desktopSize() override { return m_size; }
    int change(int width, int height, int bits, int freq) override;
    int restore(int width, int height, int bits, int freq) override;
    // What change() answers from now on; 0 is success.
    void setChangeResult(int code) { m_result = code; }

private:
    runtime::Trace& m_trace;
    runtime::PixelSize m_size;
    runtime::PixelSize m_startSize;
    int m_result = 0;
};

} // namespace ombrel::platform::fake
