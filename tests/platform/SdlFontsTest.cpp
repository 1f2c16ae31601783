// Tests of font look-up by name and of point sizes (fonts pinned to DejaVu); measuring and drawing text
// are pinned by the scenario screenshots.
#include "platform/sdl/SdlFonts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <utility>

namespace ombrel::platform::sdl {
namespace {

std::string fileName(const std::string& path)
{
    return std::filesystem::path(path).filename().string();
}

TEST(SdlFonts, NamesResolveToFilesWithFallback)
{
    SdlFonts fonts;
    const struct
    {
        const char* name;
        bool bold;
        const char* file;
    } rows[] = {
        { "DejaVu Serif", true, "DejaVuSerif-Bold.ttf" }, { "dejavu sans mono", false, "DejaVuSansMono.ttf" },
        { "No Such Font Anywhere", true, "DejaVuSans-Bold.ttf" }, { "", false, "DejaVuSans.ttf" },
        { "Arial:bold-12", false, "DejaVuSans.ttf" }, // fontconfig syntax in a name is only a name
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(fileName(fonts.fontFile(row.name, row.bold)), row.file);
    }
}

TEST(SdlFonts, PointsBecomeWholePixelsAt96Dpi)
{
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInf = std::numeric_limits<double>::infinity();
    const std::pair<double, int> rows[] = { { 8.25, 11 }, { 9.75, 13 }, { 12, 16 }, { 0.1, 1 }, { 0, 11 },
        { -4, 11 }, { kNaN, 11 }, { kInf, 11 }, { 1e12, 1000 } };
    for (const auto& [pt, px] : rows)
        EXPECT_EQ(SdlFonts::pixelSize(pt), px) << pt;
}

} // namespace
} // namespace ombrel::platform::sdl
