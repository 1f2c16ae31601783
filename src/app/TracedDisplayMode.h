// TracedDisplayMode: a real display mode backend whose requests are written to the trace.
#pragma once

#include "platform/DisplayMode.h"
#include "runtime/Trace.h"

#include <string>

namespace ombrel::app {

// Writes the lines the replay's stand-in writes ("display <w>x<h> bits <b> freq <f>", "display
// restore"), before the request reaches the display, so a real run's trace reads like a replay's.
class TracedDisplayMode final : public platform::DisplayMode
{
public:
    TracedDisplayMode(platform::DisplayMode& display, runtime::Trace& trace)
        : m_display(display)
        , m_trace(trace)
    {
    }
    runtime::PixelSize desktopSize() override { return m_display.desktopSize(); }
    int change(int width, int height, int bits, int freq) override
    {
        m_trace.effect("display " + std::to_string(width) + "x" + std::to_string(height) + " bits "
            + std::to_string(bits) + " freq " + std::to_string(freq));
        return m_display.change(width, height, bits, freq);
    }
    int restore() override
    {
        m_trace.effect("display restore");
        return m_display.restore();
    }

private:
    platform::DisplayMode& m_display;
    runtime::Trace& m_trace;
};

} // namespace ombrel::app
