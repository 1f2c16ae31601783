// PictureFolders: where a list's pictures lie. Each list has a base folder holding the folders
// "marquees", "snap", "flyers" and "cabinets"; a game's picture there is a PNG named after it.
#pragma once

#include "catalogue/Catalogue.h"
#include "config/Settings.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace ombrel::catalogue {

// One kind of picture: the picture strip's listType that asks for it, its folder below the base
// folder, and the skin's picture that stands in for a game without one.
struct PictureKind
{
    std::string_view listType;
    std::string_view folder;
    std::string_view fallback;
};

// In the order the preview panels are brought up to date: marquee, snap, flyer, cabinet. The order
// matters: the last kind that has a file is the one the full view opens.
inline constexpr std::array<PictureKind, 4> kPictureKinds { {
    { "marquee", "marquees\\", "marquee32.jpg" },
    { "snap", "snap\\", "screen32.jpg" },
    { "flyer", "flyers\\", "flyer32.jpg" },
    { "cabinet", "cabinets\\", "cabinet32.jpg" },
} };

// The kind a picture strip's listType names, or null for any other word.
const PictureKind* pictureKindOf(std::string_view listType);

// The base folder of list `path` for catalogue row `row`, whose entry in the list box reads `rowText`:
// the list's own folder for 1 to 26 (the Ultra 64 list's first folder serves "Killer Instinct" alone),
// the entry's own folder (column 3) for the Extras. nullopt outside 1 to 27.
std::optional<std::string> pictureBase(
    const config::Settings& settings, const Catalogue& catalogue, int path, int row, const std::string& rowText);

} // namespace ombrel::catalogue
