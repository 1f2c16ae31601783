// FakePower: power requests as trace lines.
#include "platform/fake/FakePower.h"

namespace ombrel::platform::fake {

int FakePower::checkPowerOffAllowed()
{
    m_trace.effect("power check");
    return m_checkResult;
}

int FakePower::powerOff()
{
    m_trace.effect("power off");
    return m_offResult;
}

} // namespace ombrel::platform::fake
