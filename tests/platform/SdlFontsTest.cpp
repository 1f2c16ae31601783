// Tests of font look-up by name, point sizes and text measurement (fonts pinned to DejaVu).
#include "platform/sdl/SdlFonts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>

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
    const struct
    {
        double pt;
        int px;
    } rows[] = {
        { 8.25, 11 },
        { 9.75, 13 },
        { 12, 16 },
        { 0.1, 1 },
        { 0, 11 },
        { -4, 11 },
        { std::numeric_limits<double>::quiet_NaN(), 11 },
        { std::numeric_limits<double>::infinity(), 11 },
        { 1e12, 1000 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pt);
        EXPECT_EQ(SdlFonts::pixelSize(row.pt), row.px);
    }
}

TEST(SdlFonts, Measure)
{
    SdlFonts fonts;
    const runtime::FontSpec regular { "DejaVu Sans", 12, false };
    runtime::FontSpec bold = regular;
    bold.bold = true;
    runtime::FontSpec larger = regular;
    larger.sizePt = 24;

    const auto one = fonts.measure(regular, "Pac-Man");
    const auto two = fonts.measure(regular, "Pac-Man Pac-Man");
    EXPECT_GT(one.w, 0);
    EXPECT_GT(two.w, one.w + one.w / 2);
    EXPECT_EQ(one.h, fonts.lineHeight(regular));
    EXPECT_EQ(fonts.measure(regular, "").w, 0);
    EXPECT_EQ(fonts.measure(regular, "").h, one.h);
    EXPECT_GT(fonts.measure(bold, "Pac-Man").w, one.w);
    EXPECT_GT(fonts.lineHeight(larger), fonts.lineHeight(regular) + fonts.lineHeight(regular) / 2);
    // Text that is not valid UTF-8 still measures.
    EXPECT_GE(fonts.measure(regular, "caf\xe9\xff").w, 0);
}

TEST(SdlFonts, RenderLine)
{
    SdlFonts fonts;
    const runtime::FontSpec font { "DejaVu Sans", 12, false };
    SurfacePtr line = fonts.renderLine(font, "Galaga", 0xFF);
    ASSERT_TRUE(line);
    const auto size = fonts.measure(font, "Galaga");
    EXPECT_EQ(line->w, size.w);
    EXPECT_EQ(line->h, size.h);
    EXPECT_FALSE(fonts.renderLine(font, "", 0xFF));
}

} // namespace
} // namespace ombrel::platform::sdl
