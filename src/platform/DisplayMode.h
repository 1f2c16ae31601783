// DisplayMode: the desktop's size and the output's mode (width, height, colour depth, refresh).
#pragma once

#include "runtime/Geometry.h"

namespace ombrel::platform {

// Codes change() answers besides 0, the ones ChangeDisplaySettings used.
constexpr int kModeFailed = -1; // the display would not take the mode
constexpr int kModeBad = -2;    // no such mode

class DisplayMode {
public:
    virtual ~DisplayMode() = default;
    // GetSystemMetrics 0 and 1: the screen's size in pixels now.
    virtual runtime::PixelSize desktopSize() = 0;
    // ChangeDisplaySettings: set a mode. Returns 0 on success, else a non-zero code (kModeFailed,
    // kModeBad). A bits or freq of 0 or below leaves that part to the backend.
    virtual int change(int width, int height, int bits, int freq) = 0;
    // Puts back the mode the output had when the backend started, if it was changed. width x height at
    // bits and freq is that mode as the program knows it (the desktop's size at start, the depth and
    // refresh of the settings); a backend that remembers the output's own mode may put that back
    // instead. 0 on success.
    virtual int restore(int width, int height, int bits, int freq) = 0;
};

} // namespace ombrel::platform
