// Geometry: twips (15 to a pixel) and pixel rectangles.
#pragma once

namespace ombrel::runtime {

constexpr double kTwipsPerPixel = 15.0;

struct PixelRect {
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;
    bool contains(int px, int py) const { return px >= x && py >= y && px < x + w && py < y + h; }
    bool operator==(const PixelRect&) const = default;
};

struct PixelSize {
    int w = 0;
    int h = 0;
    bool operator==(const PixelSize&) const = default;
};

// Twips to whole pixels, rounded to the nearest (a tie to the even neighbour).
int twipsToPixels(double twips);
double pixelsToTwips(double pixels);

} // namespace ombrel::runtime
