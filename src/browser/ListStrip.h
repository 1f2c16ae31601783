// ListStrip: the text strip of the browser: as many rows of the list's font as fit the strip's
// rectangle, in one or more columns, the middle row holding the selection and pulsing in the skin's colour.
#pragma once

#include "browser/MainControls.h"
#include "browser/Scheme.h"
#include "config/RunState.h"

#include <cstdint>
#include <optional>

namespace ombrel::browser {

struct StripLayout {
    // Columns of the strip. The skin may leave the value empty (nullopt); empty and 0 both give one
    // column once the strip is built.
    std::optional<double> listCols = 1;
    int rowAlign = 1; // alignment of the rows of a one-column strip
    double stripGap = 0; // gap between the cells of the picture strip, on the design scale until the boot scales it
};

// The most rows a strip gets. Every row is a control that each step of the selection rewrites, and no
// screen shows this many readable lines (a 2160-pixel screen of 8-pixel lines in ten columns is 2700);
// without a bound a skin with a huge rectangle or column count would load labels for minutes.
constexpr int kMaxStripRows = 4000;

// Builds whichever strip the skin's listType asks for and sets midRow; the middle row takes the scheme's
// colours. Steps that fail are passed over.
void SetListSize(MainControls& c, config::RunState& run, StripLayout& layout, const Scheme& scheme);
// Hides ll(0) and unloads the other rows; failures are passed over.
void DelList(MainControls& c);

// The picture strip's counterparts (PictureStrip.cpp). SetListSize2 lays copies of xlist(0) over Shape1,
// left to right and then downwards with stripGap between them, puts shphigh around the middle cell and
// sets midRow; it throws at the first step that fails, which ends the build. DelList2 hides xlist(0) and
// unloads the other cells, passing over failures.
void SetListSize2(MainControls& c, config::RunState& run, StripLayout& layout);
void DelList2(MainControls& c);

// The pulse's factor for a step (0 to 6), nullopt for step 7 and any other value: no change of colour.
std::optional<double> pulseFactor(int highStep);
// One tick of the pulse, after other events have run: ll(midRow) turns transparent and, with shphigh,
// takes schemeFore times the step's factor; highStep moves on (after 7, or any stray value, to 0). A
// middle row that is missing or hidden (a picture strip) is left alone, so only shphigh pulses.
void pulseHighlight(MainControls& c, int midRow, uint32_t schemeFore, int& highStep);

} // namespace ombrel::browser
