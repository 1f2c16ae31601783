// SkinLayout: where the skin places the browser's elements, and taking the screen down.
#pragma once

#include "browser/ListStrip.h"
#include "browser/MainControls.h"
#include "config/RunState.h"

#include <string>

namespace ombrel::browser {

// Reads the current skin's skin.ini and places the controls on the design form.
void setRes(MainControls& c, config::RunState& run, StripLayout& strip, const std::string& skinFolder);
// Applies the skin's show flags for the path caption and the navigation labels.
void makeVis(MainControls& c);

} // namespace ombrel::browser
