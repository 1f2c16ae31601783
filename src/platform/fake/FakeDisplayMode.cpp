// FakeDisplayMode: mode changes as trace lines.
#include "platform/fake/FakeDisplayMode.h"

#include <string>

namespace ombrel::platform::fake {

std::string modeText(int width, int height, int bits, int freq)
{
    return std::to_string(width) + "x" + std::to_string(height) + " bits " + std::to_string(bits) + " freq "
        + std::to_string(freq);
}

int FakeDisplayMode::change(int width, int height, int bits, int freq)
{
    m_trace.effect("display " + modeText(width, height, bits, freq));
    if (m_result == 0 && width > 0 && height > 0)
        m_size = { width, height };
    return m_result;
}

int FakeDisplayMode::restore(int width, int height, int bits, int freq)
{
    m_trace.effect("display restore " + modeText(width, height, bits, freq));
    m_size = m_startSize;
    return 0;
}

} // namespace ombrel::platform::fake
