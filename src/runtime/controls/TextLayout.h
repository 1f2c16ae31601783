// TextLayout: breaks a label's text into lines the way a Windows label does: at line breaks, and at
// blanks where a line would run past the box's width. A word wider than the box stands alone, clipped.
#pragma once

#include "runtime/DrawList.h"

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::platform {
class Fonts;
}

namespace ombrel::runtime {

// How much of a text can be seen, so that a caption of any length costs only what its box shows.
struct TextView
{
    int maxLines = std::numeric_limits<int>::max(); // lines below these are outside the box
    // Characters of one line that can be seen. A line with more is cut to that many: its start, its end
    // or its middle, as the alignment puts that part in the box.
    size_t maxChars = std::numeric_limits<size_t>::max();
    TextAlign align = TextAlign::Left;
};

// Lines of UTF-8 text; maxWidth < 0 breaks only at line breaks. Each byte of the text is looked at
// once at most, and only the lines and characters the view names are measured.
std::vector<std::string> layoutLines(platform::Fonts& fonts, const FontSpec& font, std::string_view utf8,
    int maxWidth, const TextView& view = {});

// The part of one line of UTF-8 text that a view of maxChars characters shows with that alignment.
std::string_view visiblePart(std::string_view utf8, size_t maxChars, TextAlign align);

} // namespace ombrel::runtime
