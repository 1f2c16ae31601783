// PictureStrip: the picture strip of the browser: a grid of cells over the strip's rectangle, each
// showing one game's picture, the selected game in the middle cell with the pulsing frame behind it.
#pragma once

#include "browser/ListStrip.h"
#include "browser/MainControls.h"
#include "browser/Scheme.h"
#include "catalogue/Table.h"
#include "config/RunState.h"
#include "config/SavedState.h"
#include "platform/Files.h"

#include <string>

namespace ombrel::browser {

// What a fill of the cells reads besides the browser's controls.
struct PictureStripContext
{
    platform::Files& files;
    const std::string& home; // the program's folder, which a relative picture folder is below
    const config::RunState& run; // scanDir (the pictures' folder, set by the caller), themesDir, midRow
    const config::SavedState& saved; // curSkin
    const Scheme& scheme;
};

// Fills the cells around the selection from `games`, the table of the current list (row n is entry
// n - 1 of List1): the middle cell the selected game's picture, the others the games before and after
// it. A game without a picture leaves its cell on `fallback`, a picture of the skin; cells without a game
// are hidden. lblPath takes the selected name, since the cells show none.
void shootScreens(MainControls& c, const PictureStripContext& ctx, const catalogue::Table& games,
    const std::string& fallback);

} // namespace ombrel::browser
