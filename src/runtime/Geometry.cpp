// Geometry: twips and pixels.
#include "runtime/Geometry.h"

#include "core/VbMath.h"

#include <cmath>
#include <limits>

namespace ombrel::runtime {

int twipsToPixels(double twips)
{
    double px = core::roundHalfEven(twips / kTwipsPerPixel);
    // A hand-edited skin may ask for anything; keep the number drawable.
    constexpr double limit = 1 << 24;
    if (!std::isfinite(px))
        return 0;
    if (px > limit)
        return static_cast<int>(limit);
    if (px < -limit)
        return static_cast<int>(-limit);
    return static_cast<int>(px);
}

double pixelsToTwips(double pixels) { return pixels * kTwipsPerPixel; }

} // namespace ombrel::runtime
