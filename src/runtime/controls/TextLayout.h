// TextLayout: breaks a label's text into lines the way a Windows label does: at line breaks, and at
// blanks where a line would run past the box's width. A word wider than the box stands alone, clipped.
#pragma once

#include "runtime/DrawList.h"

#include <string>
#include <string_view>
#include <vector>

namespace ombrel::platform {
class Fonts;
}

namespace ombrel::runtime {

// Lines of UTF-8 text; maxWidth < 0 breaks only at line breaks.
std::vector<std::string> layoutLines(platform::Fonts& fonts, const FontSpec& font, std::string_view utf8, int maxWidth);

} // namespace ombrel::runtime
