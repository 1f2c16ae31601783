// Tests of font look-up by name, point sizes and text measurement (fonts pinned to DejaVu).
#include "platform/sdl/SdlFonts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <utility>
#include <vector>

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
        { "MS Sans Serif", false, "DejaVuSans.ttf" }, // the labels' design font: no report
    };
    std::vector<std::string> unmatched;
    fonts.onUnmatched = [&](const std::string& name) { unmatched.push_back(name); };
    for (int pass = 0; pass < 2; ++pass) // a name is looked up, and reported, once
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name);
            EXPECT_EQ(fileName(fonts.fontFile(row.name, row.bold)), row.file);
        }
    EXPECT_EQ(unmatched, (std::vector<std::string> { "No Such Font Anywhere", "Arial:bold-12" }));
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

// The browser lays out lines by their measured size, so measuring and drawing must agree.
TEST(SdlFonts, RenderedLinesHaveTheMeasuredSize)
{
    SdlFonts fonts;
    const runtime::FontSpec regular { "DejaVu Sans", 12, false };
    const auto size = fonts.measure(regular, "Pac-Man");
    SurfacePtr line = fonts.renderLine(regular, "Pac-Man", 0xFF);
    ASSERT_TRUE(line);
    EXPECT_EQ((runtime::PixelSize { line->w, line->h }), size);
    EXPECT_EQ(fonts.measure(regular, ""), (runtime::PixelSize { 0, size.h }));
    EXPECT_FALSE(fonts.renderLine(regular, "", 0xFF));
    EXPECT_GE(fonts.measure(regular, "caf\xe9\xff").w, 0) << "text that is not UTF-8 still measures";
}

} // namespace
} // namespace ombrel::platform::sdl
