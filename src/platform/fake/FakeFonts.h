// FakeFonts: text metrics that follow a simple rule instead of a font file, so unit tests can work out
// sizes by hand: a font of pt points is px = pt * 96 / 72 pixels (rounded), a line is px * 1.2 pixels
// high (rounded), and every character is 0.6 * px wide.
#pragma once

#include "platform/Fonts.h"

namespace ombrel::platform::fake {

class FakeFonts final : public Fonts {
public:
    runtime::PixelSize measure(const runtime::FontSpec& font, std::string_view utf8) override;
    int lineHeight(const runtime::FontSpec& font) override;
    // "fake:<name>[:bold]": no file stands behind these metrics.
    std::string fileOf(const runtime::FontSpec& font) override;
    static int pixelSize(const runtime::FontSpec& font);
};

} // namespace ombrel::platform::fake
