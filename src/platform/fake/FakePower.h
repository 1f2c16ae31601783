// FakePower: records the requests to power the machine off and answers them as told.
#pragma once

#include "platform/Power.h"
#include "runtime/Trace.h"

namespace ombrel::platform::fake {

// Trace lines: "power check", "power off".
class FakePower final : public Power {
public:
    explicit FakePower(runtime::Trace& trace)
        : m_trace(trace)
    {
    }
    int checkPowerOffAllowed() override;
    int powerOff() override;
    void setCheckResult(int code) { m_checkResult = code; }
    void setPowerOffResult(int code) { m_offResult = code; }
    int lastSystemError() override { return m_systemError; }
    void setSystemError(int error) { m_systemError = error; }

private:
    runtime::Trace& m_trace;
    int m_checkResult = 0;
    int m_offResult = 0;
    int m_systemError = 0;
};

} // namespace ombrel::platform::fake
