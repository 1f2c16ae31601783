// SkinLayout: where the skin places the browser's elements, and taking the screen down.
#pragma once

#include "browser/ListStrip.h"
#include "browser/MainControls.h"
#include "config/RunState.h"

#include <string>

namespace ombrel::platform {
class Files;
}

namespace ombrel::browser {

// Reads the skin's skin.ini in skinFolder (which ends with a separator) and places the controls on the
// design form, then hands the strip its columns, gap and alignment. Every placing step runs, whatever
// could be read: a value the file does not give keeps what it held (see readSkin). Returns why the
// file could not be read in full, or "" when it was.
std::string setRes(MainControls& c, config::RunState& run, StripLayout& strip, const std::string& skinFolder,
    platform::Files& files);
// Lines the navigation labels up behind lblNav(0), each as wide as it is, with no gaps.
void MoveNav(MainControls& c);
// Applies the skin's show flags for the path caption and the navigation labels.
void makeVis(MainControls& c, const config::RunState& run);
// Takes the screen down for a new skin or font size, or for the end of the program: empties the strip,
// hides the panels and labels, lets the start-up form bring the browser back later, and unloads the
// browser form. A step that fails is passed over.
void KillDisplay(MainControls& c, config::RunState& run);

} // namespace ombrel::browser
