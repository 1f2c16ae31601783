// ScreenGrab: what an X display shows, read back pixel by pixel, and the rectangles a skin gives the
// browser, scaled to that screen.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ombrel::test {

struct ScreenRect
{
    int x = 0, y = 0, w = 0, h = 0;
    bool contains(int px, int py) const { return px >= x && px < x + w && py >= y && py < y + h; }
};

// The whole root window of a display, as 0xRRGGBB pixels.
class ScreenGrab
{
public:
    // nullopt when the display cannot be opened or read.
    static std::optional<ScreenGrab> take(const std::string& display);

    int width() const { return m_width; }
    int height() const { return m_height; }
    uint32_t at(int x, int y) const { return m_pixels[static_cast<size_t>(y) * static_cast<size_t>(m_width) + static_cast<size_t>(x)]; }

private:
    int m_width = 0;
    int m_height = 0;
    std::vector<uint32_t> m_pixels;
};

// The largest difference between two 0xRRGGBB colours in any one channel.
int colourDistance(uint32_t a, uint32_t b);

// The rectangles of a skin.ini (the design form is 7680 x 5760 twips), scaled to a screen of w x h
// pixels: the four picture panels, the list strip, the logo (whose line gives height before width), and
// the rows where the path and navigation labels start. Fields are read in order, a comma and a line end
// alike ending one.
struct SkinRects
{
    std::vector<ScreenRect> panels;
    ScreenRect strip;
    ScreenRect logo;
    std::vector<int> labelTops;
};
std::optional<SkinRects> readSkinRects(const std::string& skinIni, int w, int h);

} // namespace ombrel::test
