// SkinLayout: placing the browser's elements.
#include "browser/SkinLayout.h"

namespace ombrel::browser {

void setRes(MainControls&, config::RunState&, StripLayout&, const std::string&)
{
    // FIXME: the skin file's placements join here with the screen-layout feature; the design positions
    // stand until then.
}

void makeVis(MainControls&)
{
    // FIXME: the skin's show flags join here with the screen-layout feature.
}

} // namespace ombrel::browser
