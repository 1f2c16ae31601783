// ListStrip: builds the text strip of the browser: as many rows of the list's font as fit the strip's
// rectangle, in one or more columns, with the middle row holding the selection.
#pragma once

#include "browser/MainControls.h"
#include "config/RunState.h"

namespace ombrel::browser {

struct StripLayout {
    int listCols = 1; // columns of the strip, at least 1
    int rowAlign = 1; // alignment of the rows of a one-column strip
    double stripGap = 0; // gap between the cells of the picture strip, on the design scale until the boot scales it
};

// Lays the rows out over Shape1 and sets midRow. Steps that fail are passed over.
void SetListSize(MainControls& c, config::RunState& run, StripLayout& layout);
// Hides ll(0) and unloads the other rows.
void DelList(MainControls& c);

} // namespace ombrel::browser
