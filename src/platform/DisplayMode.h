// DisplayMode: the desktop's size and the output's mode (width, height, colour depth, refresh).
#pragma once

#include "runtime/Geometry.h"

namespace ombrel::platform {

class DisplayMode {
public:
    virtual ~DisplayMode() = default;
    // GetSystemMetrics 0 and 1: the screen's size in pixels now.
    virtual runtime::PixelSize desktopSize() = 0;
    // ChangeDisplaySettings: set a mode. Returns 0 on success, else a non-zero code.
    virtual int change(int width, int height, int bits, int freq) = 0;
};

} // namespace ombrel::platform
