// Tests of the screenshot comparison: where the tolerances for text rasterisation end.
#include "GoldenImage.h"
#include "TempHome.h"

#include <SDL.h>
#include <SDL_image.h>

#include <gtest/gtest.h>

namespace ombrel::test {
namespace {

// A 100 x 100 grey picture, with `changed` pixels (from the top left) shifted by the given amounts.
std::string writePicture(const TempHome& home, const std::string& name, int w, int changed, int dr, int dg, int db)
{
    SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, w, 100, 32, SDL_PIXELFORMAT_RGBA32);
    for (int i = 0; i < w * 100; ++i) {
        auto* p = static_cast<uint8_t*>(s->pixels) + (i / w) * s->pitch + (i % w) * 4;
        const bool shifted = i < changed;
        p[0] = uint8_t(100 + (shifted ? dr : 0));
        p[1] = uint8_t(100 + (shifted ? dg : 0));
        p[2] = uint8_t(100 + (shifted ? db : 0));
        p[3] = 255;
    }
    const std::string path = home.path() + name;
    IMG_SavePNG(s, path.c_str());
    SDL_FreeSurface(s);
    return path;
}

TEST(GoldenImage, ToleratesSmallDifferencesOnAFewPixels)
{
    struct Row {
        const char* name;
        int width, changed, dr, dg, db;
        bool matches;
    };
    const Row rows[] = {
        { "identical", 100, 0, 0, 0, 0, true },
        { "every pixel at the distance limit", 100, 10000, 16, 16, 16, true },
        { "every pixel just beyond it", 100, 10000, 16, 16, 17, false },
        { "0.5% of the pixels far off", 100, 50, 150, 0, 0, true },
        { "one pixel more", 100, 51, 150, 0, 0, false },
        { "another size", 99, 0, 0, 0, 0, false },
    };
    TempHome home;
    const std::string expected = writePicture(home, "expected.png", 100, 0, 0, 0, 0);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string actual = writePicture(home, "actual.png", row.width, row.changed, row.dr, row.dg, row.db);
        EXPECT_EQ(GoldenImage::compare(expected, actual).empty(), row.matches);
    }
    EXPECT_FALSE(GoldenImage::compare(expected, home.path() + "missing.png").empty());
}

TEST(GoldenImage, MismatchLeavesTheActualAndTheDifferenceBesideTheExpected)
{
    if (GoldenImage::updating())
        GTEST_SKIP() << "compares nothing while goldens are rewritten";
    TempHome home;
    const std::string expected = writePicture(home, "expected-menu.png", 100, 0, 0, 0, 0);
    const std::string actual = writePicture(home, "run.png", 100, 200, 150, 0, 0);
    EXPECT_FALSE(GoldenImage::check(expected, actual).empty());
    EXPECT_TRUE(home.exists("menu.actual.png"));
    EXPECT_TRUE(home.exists("menu.diff.png"));

    // A later match clears them away.
    EXPECT_EQ(GoldenImage::check(expected, expected), "");
    EXPECT_FALSE(home.exists("menu.actual.png"));
    EXPECT_FALSE(home.exists("menu.diff.png"));
}

} // namespace
} // namespace ombrel::test
