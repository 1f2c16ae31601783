// FakeFonts: metrics by rule.
#include "platform/fake/FakeFonts.h"

#include <algorithm>
#include <cmath>

namespace ombrel::platform::fake {

namespace {

// Rounds to the nearest, a tie to the even neighbour, within limits no text can reach, so a size from a
// hand-edited file never overflows.
int roundPixels(double value)
{
    if (!std::isfinite(value))
        return 0;
    return int(std::nearbyint(std::clamp(value, 0.0, 1e7)));
}

} // namespace

int FakeFonts::pixelSize(const runtime::FontSpec& font) { return roundPixels(font.sizePt * 96.0 / 72.0); }

int FakeFonts::lineHeight(const runtime::FontSpec& font) { return roundPixels(pixelSize(font) * 1.2); }

runtime::PixelSize FakeFonts::measure(const runtime::FontSpec& font, std::string_view utf8)
{
    // Characters, not bytes: continuation bytes of UTF-8 are 10xxxxxx.
    size_t chars = 0;
    for (unsigned char c : utf8)
        chars += (c & 0xC0) != 0x80 ? 1 : 0;
    return { roundPixels(0.6 * pixelSize(font) * double(chars)), lineHeight(font) };
}

std::string FakeFonts::fileOf(const runtime::FontSpec& font)
{
    return "fake:" + font.name + (font.bold ? ":bold" : "");
}

} // namespace ombrel::platform::fake
