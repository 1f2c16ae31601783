// FakeDisplayMode: mode changes as trace lines.
#include "platform/fake/FakeDisplayMode.h"

#include <string>

namespace ombrel::platform::fake {

int FakeDisplayMode::change(int width, int height, int bits, int freq)
{
    m_trace.effect("display " + std::to_string(width) + "x" + std::to_string(height) + " bits " +
                   std::to_string(bits) + " freq " + std::to_string(freq));
    if (m_result == 0 && width > 0 && height > 0)
        m_size = { width, height };
    return m_result;
}

int FakeDisplayMode::restore()
{
    m_trace.effect("display restore");
    m_size = m_startSize;
    return 0;
}

} // namespace ombrel::platform::fake
