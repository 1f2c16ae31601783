// DisplayModes: mode changes through the platform.
#include "system/DisplayModes.h"

#include "core/VbMath.h"

namespace ombrel::system {

int changeRes(platform::DisplayMode& display, double width, double height, double bits, double freq)
{
    auto depth = core::toInteger(bits);
    auto refresh = core::toLong(freq);
    auto w = core::toLong(width);
    auto h = core::toLong(height);
    // NOTE: a value that does not fit its field stops here, before the display is asked, so the front
    // end stays in the mode it has rather than getting a mode made of clipped numbers.
    if (!depth || !refresh || !w || !h)
        return platform::kModeBad;
    return display.change(*w, *h, *depth, *refresh);
}

int restoreRes(platform::DisplayMode& display, double width, double height, double bits, double freq)
{
    return display.restore(core::toLong(width).value_or(0), core::toLong(height).value_or(0),
        core::toInteger(bits).value_or(0), core::toLong(freq).value_or(0));
}

} // namespace ombrel::system
