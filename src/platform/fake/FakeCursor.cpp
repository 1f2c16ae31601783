// FakeCursor: pointer moves by the program as trace lines.
#include "platform/fake/FakeCursor.h"

#include <string>

namespace ombrel::platform::fake {

void FakeCursor::setPosition(int x, int y)
{
    m_pos = { x, y };
    m_trace.effect("cursor " + std::to_string(x) + " " + std::to_string(y));
}

} // namespace ombrel::platform::fake
