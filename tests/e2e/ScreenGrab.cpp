// ScreenGrab: XGetImage of the root window; skin.ini read as the browser reads its fields.
#include "ScreenGrab.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>

namespace ombrel::test {

std::optional<ScreenGrab> ScreenGrab::take(const std::string& display)
{
    std::unique_ptr<Display, int (*)(Display*)> x(XOpenDisplay(display.c_str()), XCloseDisplay);
    if (!x)
        return std::nullopt;
    const Window root = DefaultRootWindow(x.get());
    XWindowAttributes attributes {};
    if (!XGetWindowAttributes(x.get(), root, &attributes))
        return std::nullopt;
    // XDestroyImage is a macro, so it cannot be the deleter itself.
    auto destroy = [](XImage* image) { XDestroyImage(image); };
    std::unique_ptr<XImage, decltype(destroy)> image(
        XGetImage(x.get(), root, 0, 0, static_cast<unsigned>(attributes.width),
            static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap),
        destroy);
    if (!image)
        return std::nullopt;
    ScreenGrab grab;
    grab.m_width = attributes.width;
    grab.m_height = attributes.height;
    grab.m_pixels.reserve(static_cast<size_t>(grab.m_width) * static_cast<size_t>(grab.m_height));
    // A 24-bit TrueColor screen: red, green and blue in the masks the visual gives.
    auto channel = [](unsigned long pixel, unsigned long mask) {
        int shift = 0;
        while (mask && !(mask & 1)) {
            mask >>= 1;
            ++shift;
        }
        return static_cast<uint32_t>((pixel >> shift) & 0xFF);
    };
    for (int y = 0; y < grab.m_height; ++y) {
        for (int x = 0; x < grab.m_width; ++x) {
            const unsigned long pixel = XGetPixel(image.get(), x, y);
            grab.m_pixels.push_back((channel(pixel, image->red_mask) << 16) | (channel(pixel, image->green_mask) << 8)
                | channel(pixel, image->blue_mask));
        }
    }
    return grab;
}

int colourDistance(uint32_t a, uint32_t b)
{
    int most = 0;
    for (int shift : { 0, 8, 16 })
        most = std::max(most, std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF)));
    return most;
}

std::optional<SkinRects> readSkinRects(const std::string& skinIni, int w, int h)
{
    std::ifstream in(skinIni, std::ios::binary);
    if (!in)
        return std::nullopt;
    std::vector<std::string> fields;
    std::string field;
    for (char c; in.get(c);) {
        if (c == ',' || c == '\n') {
            if (!field.empty() && field.back() == '\r')
                field.pop_back();
            fields.push_back(field);
            field.clear();
        } else {
            field += c;
        }
    }
    fields.push_back(field);
    // Line by line: four panels each with its flag, the strip, columns, kind, cell size, the path
    // label and its flag, the first navigation label and its flag, gap, alignment, the logo.
    constexpr size_t kLogo = 36;
    if (fields.size() < kLogo + 4)
        return std::nullopt;
    auto number = [&](size_t i) { return std::atof(fields[i].c_str()); };
    auto xOf = [&](double twips) { return static_cast<int>(std::lround(twips * w / 7680.0)); };
    auto yOf = [&](double twips) { return static_cast<int>(std::lround(twips * h / 5760.0)); };
    // Top, Left, Width, Height from field i.
    auto rect = [&](size_t i) {
        return ScreenRect { xOf(number(i + 1)), yOf(number(i)), xOf(number(i + 2)), yOf(number(i + 3)) };
    };
    SkinRects skin;
    for (size_t panel : { 0u, 5u, 10u, 15u })
        skin.panels.push_back(rect(panel));
    skin.strip = rect(20);
    skin.labelTops = { yOf(number(28)), yOf(number(31)) };
    skin.logo = { xOf(number(kLogo + 1)), yOf(number(kLogo)), xOf(number(kLogo + 3)), yOf(number(kLogo + 2)) };
    return skin;
}

} // namespace ombrel::test
