// ReadAhead: which pictures the browser will show in the next steps of the selection, told to the
// picture cache after every step so that its workers decode them before they are needed.
#pragma once

#include "browser/MainControls.h"
#include "catalogue/Catalogue.h"
#include "config/RunState.h"
#include "config/Settings.h"
#include "platform/Images.h"

#include <string>
#include <vector>

namespace ombrel::browser {

// What the read-ahead reads besides the browser's controls.
struct ReadAheadContext
{
    platform::Images& images;
    const config::Settings& settings; // the lists' picture folders
    const catalogue::Catalogue& catalogue; // the games' names
    const config::RunState& run; // curPath, listType, midRow and the skin's panel flags
    const std::string& home; // the program's folder, with a trailing '/': where relative folders lie
};

// Follows the selection and wishes, most wanted first: the pictures of the selected game and of the
// cells on screen (they are painted next, fitted to their boxes), then the rows a held key reaches in
// the next kStepsAhead steps in the direction of the last one, then both neighbours of the selection.
// In a picture strip each of those steps brings in the cells at the strip's leading edge; the cells
// already wished for are not wished again. Every path is the one the panel or cell will load, built
// from names only: no file is looked at here, so a game without a picture costs a worker one failed
// look-up, never the loop.
class ReadAhead {
public:
    // Steps of a held key decoded ahead. At the 75 ms repeat four steps give the workers 300 ms for a
    // game's pictures, and a page of a 3 x 3 strip brings in 4 rows a step: 16 cells at most.
    static constexpr int kStepsAhead = 4;

    // The selection moved by this many rows: +1 Down, -1 Up, +midRow or -midRow a page; 0 when the way
    // it went says nothing about the next step. A change of list counts as 0 without being told.
    void stepped(int rows) { m_step = rows; }

    // Tells ctx.images what the selection of c will likely show next, replacing the last wishes.
    void wish(const MainControls& c, const ReadAheadContext& ctx);

private:
    class Builder;

    static constexpr int kNoPath = -1;
    int m_step = 0;
    int m_path = kNoPath; // the list of the last wishes
    std::vector<platform::PictureWish> m_wishes; // kept between steps: its paths keep their memory
};

} // namespace ombrel::browser
