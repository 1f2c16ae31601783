// DrawList: what a frame shows, as plain commands in screen pixels, painted bottom to top. The
// runtime builds it; a Renderer paints it. Colours are the system's numbers (blue*65536+green*256+red).
#pragma once

#include "runtime/Geometry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ombrel::runtime {

struct FontSpec {
    std::string name; // a font name, found through fontconfig; DejaVu Sans when not found
    double sizePt = 8.25;
    bool bold = false;
    bool operator==(const FontSpec&) const = default;
};

enum class ImageFit {
    Stretch, // fill the rectangle (a form's Picture, a logo with Stretch)
    Contain, // keep proportions, centred (the picture control)
    Natural, // the picture's own size at the rectangle's top left
};

enum class TextAlign { Left = 0, Right = 1, Center = 2 };

struct DrawCommand {
    // Film: the latest picture of the film that the player named in text plays, fitted into rect.
    enum class Kind { Fill, Frame, Image, Text, Film };
    Kind kind = Kind::Fill;
    PixelRect rect; // where it goes
    PixelRect clip; // nothing outside is painted (the form's area, or the label's box)
    uint32_t colour = 0; // fill, frame or text colour
    int lineWidth = 1; // Frame
    std::string path; // Image: file path
    ImageFit fit = ImageFit::Stretch;
    std::string text; // Text: UTF-8
    FontSpec font;
    TextAlign align = TextAlign::Left;
    bool wrap = false; // Text: break lines at blanks to fit rect.w
    bool operator==(const DrawCommand&) const = default;
};

using DrawList = std::vector<DrawCommand>;

} // namespace ombrel::runtime
