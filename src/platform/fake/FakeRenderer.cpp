// FakeRenderer: frames kept in memory.
#include "platform/fake/FakeRenderer.h"

namespace ombrel::platform::fake {

void FakeRenderer::present(const runtime::DrawList& frame)
{
    ++m_presentCount;
    m_lastFrame = frame;
}

std::string FakeRenderer::screenshot(const runtime::DrawList& frame, const std::string& pngPath)
{
    m_screenshots.push_back({ pngPath, frame });
    return {};
}

} // namespace ombrel::platform::fake
