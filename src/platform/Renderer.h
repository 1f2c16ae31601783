// Renderer: paints a DrawList on the screen, or into a PNG file.
#pragma once

#include "runtime/DrawList.h"

#include <string>

namespace ombrel::platform {

class Renderer {
public:
    virtual ~Renderer() = default;
    // The screen's size in pixels.
    virtual runtime::PixelSize screenSize() const = 0;
    // The screen's size changed (a display mode change).
    virtual void setScreenSize(runtime::PixelSize size) = 0;
    // Show a frame.
    virtual void present(const runtime::DrawList& frame) = 0;
    // Paint a frame into a PNG file of the screen's size. Returns an empty string or a message.
    virtual std::string screenshot(const runtime::DrawList& frame, const std::string& pngPath) = 0;
    // Show or hide the mouse pointer over the window.
    virtual void setPointerVisible(bool visible) = 0;
};

} // namespace ombrel::platform
