// DisplayModes: changing the screen's mode for the front end and putting the desktop's back.
#pragma once

#include "platform/DisplayMode.h"

namespace ombrel::system {

// Sets width x height at the colour depth and refresh rate asked for (0 keeps the current one).
// Returns 0 on success, else the platform's code.
int changeRes(platform::DisplayMode& display, double width, double height, double bits, double freq);

} // namespace ombrel::system
