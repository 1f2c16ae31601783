// DisplayModes: changing the screen's mode for the front end and putting the desktop's back.
#pragma once

#include "platform/DisplayMode.h"

namespace ombrel::system {

// Sets width x height at the colour depth and refresh rate asked for. Each value is rounded to the
// nearest whole number (a tie to the even one) and passed on as it is, 0 included: a refresh of 0 lets
// the display choose. The depth is a 16-bit value, the others 32-bit; a value that does not fit leaves
// the mode as it is. Returns 0 on success, else the platform's code; callers may ignore it, since the
// front end goes on in whatever mode the display took.
int changeRes(platform::DisplayMode& display, double width, double height, double bits, double freq);

// Gives the desktop back the mode found at start: its size then, with the depth and refresh the
// settings keep for it, rounded as changeRes rounds them. Unlike a change, the desktop is always asked:
// a value that does not fit its field goes as 0, which leaves that part to the display.
int restoreRes(platform::DisplayMode& display, double width, double height, double bits, double freq);

} // namespace ombrel::system
