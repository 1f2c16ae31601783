// Fonts: text measurement, so labels can size themselves and forms can answer TextHeight.
#pragma once

#include "runtime/DrawList.h"

#include <string>
#include <string_view>

namespace ombrel::platform {

class Fonts {
public:
    virtual ~Fonts() = default;
    // Size in pixels of one line of UTF-8 text (no wrapping).
    virtual runtime::PixelSize measure(const runtime::FontSpec& font, std::string_view utf8) = 0;
    // Height in pixels of one line of the font.
    virtual int lineHeight(const runtime::FontSpec& font) = 0;
    // The font file the name resolves to (the best installed match, DejaVu when none matches), for
    // reports: a skin names fonts, and the owner needs to see which file each one became.
    virtual std::string fileOf(const runtime::FontSpec& font) = 0;
};

} // namespace ombrel::platform
