// TracedDisplayMode: a real display mode backend whose requests are written to the trace.
#pragma once

#include "platform/DisplayMode.h"
#include "platform/fake/FakeDisplayMode.h"
#include "runtime/Trace.h"

namespace ombrel::app {

// Writes the lines the replay's stand-in writes ("display <w>x<h> bits <b> freq <f>", "display restore
// <w>x<h> bits <b> freq <f>"), before the request reaches the display, so a real run's trace reads like
// a replay's.
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
        m_trace.effect("display " + platform::fake::modeText(width, height, bits, freq));
        return m_display.change(width, height, bits, freq);
    }
    int restore(int width, int height, int bits, int freq) override
    {
        m_trace.effect("display restore " + platform::fake::modeText(width, height, bits, freq));
        return m_display.restore(width, height, bits, freq);
    }

private:
    platform::DisplayMode& m_display;
    runtime::Trace& m_trace;
};

} // namespace ombrel::app
