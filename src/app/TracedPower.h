// TracedPower: a real power backend whose requests are written to the trace.
#pragma once

#include "platform/Power.h"
#include "runtime/Trace.h"

namespace ombrel::app {

// Writes the lines the replay's stand-in writes ("power check", "power off") before asking.
class TracedPower final : public platform::Power
{
public:
    TracedPower(platform::Power& power, runtime::Trace& trace)
        : m_power(power)
        , m_trace(trace)
    {
    }
    int checkPowerOffAllowed() override
    {
        m_trace.effect("power check");
        return m_power.checkPowerOffAllowed();
    }
    int powerOff() override
    {
        m_trace.effect("power off");
        return m_power.powerOff();
    }
    int lastSystemError() override { return m_power.lastSystemError(); }

private:
    platform::Power& m_power;
    runtime::Trace& m_trace;
};

} // namespace ombrel::app
