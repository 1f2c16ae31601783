// Tests of font look-up by name, point sizes and text measurement (fonts pinned to DejaVu).
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
        { "DejaVu Serif", false, "DejaVuSerif.ttf" }, { "DejaVu Serif", true, "DejaVuSerif-Bold.ttf" },
        { "dejavu sans mono", false, "DejaVuSansMono.ttf" },
        { "No Such Font Anywhere", false, "DejaVuSans.ttf" },
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

TEST(SdlFonts, MeasuresTextAndRendersLinesOfThatSize)
{
    SdlFonts fonts;
    const runtime::FontSpec regular { "DejaVu Sans", 12, false };
    const runtime::FontSpec bold { "DejaVu Sans", 12, true };
    const runtime::FontSpec larger { "DejaVu Sans", 24, false };

    const auto one = fonts.measure(regular, "Pac-Man");
    EXPECT_GT(one.w, 0);
    EXPECT_GT(fonts.measure(regular, "Pac-Man Pac-Man").w, one.w + one.w / 2);
    EXPECT_EQ(one.h, fonts.lineHeight(regular));
    EXPECT_EQ(fonts.measure(regular, ""), (runtime::PixelSize { 0, one.h }));
    EXPECT_GT(fonts.measure(bold, "Pac-Man").w, one.w);
    EXPECT_GT(fonts.lineHeight(larger), fonts.lineHeight(regular) + fonts.lineHeight(regular) / 2);
    // Text that is not valid UTF-8 still measures.
    EXPECT_GE(fonts.measure(regular, "caf\xe9\xff").w, 0);

    SurfacePtr line = fonts.renderLine(regular, "Pac-Man", 0xFF);
    ASSERT_TRUE(line);
    EXPECT_EQ((runtime::PixelSize { line->w, line->h }), one);
    EXPECT_FALSE(fonts.renderLine(regular, "", 0xFF));
}

} // namespace
} // namespace ombrel::platform::sdl
