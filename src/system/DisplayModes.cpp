// DisplayModes: mode changes through the platform.
#include "system/DisplayModes.h"

#include "core/VbMath.h"

namespace ombrel::system {

namespace {
    int whole(double value)
    {
        auto n = core::toLong(value);
        return n ? static_cast<int>(*n) : 0;
    }
}

int changeRes(platform::DisplayMode& display, double width, double height, double bits, double freq)
{
    return display.change(whole(width), whole(height), whole(bits), whole(freq));
}

} // namespace ombrel::system
