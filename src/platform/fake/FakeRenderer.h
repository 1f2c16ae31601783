// FakeRenderer: keeps the frames it is asked to show and the screenshots it is asked to take, so unit
// tests can look at draw commands instead of pixels.
#pragma once

#include "platform/Renderer.h"

#include <string>
#include <vector>

namespace ombrel::platform::fake {

class FakeRenderer final : public Renderer {
public:
    struct Screenshot {
        std::string path;
        runtime::DrawList frame;
    };

    explicit FakeRenderer(runtime::PixelSize screen = { 640, 480 })
        : m_size(screen)
    {
    }
    runtime::PixelSize screenSize() const override { return m_size; }
    void setScreenSize(runtime::PixelSize size) override { m_size = size; }
    void present(const runtime::DrawList& frame) override;
    // Writes no file.
    std::string screenshot(const runtime::DrawList& frame, const std::string& pngPath) override;
    void setPointerVisible(bool visible) override { m_pointerVisible = visible; }

    int presentCount() const { return m_presentCount; }
    const runtime::DrawList& lastFrame() const { return m_lastFrame; }
    const std::vector<Screenshot>& screenshots() const { return m_screenshots; }
    bool pointerVisible() const { return m_pointerVisible; }

private:
    runtime::PixelSize m_size;
    int m_presentCount = 0;
    runtime::DrawList m_lastFrame;
    std::vector<Screenshot> m_screenshots;
    bool m_pointerVisible = true;
};

} // namespace ombrel::platform::fake
