// Tests of the picture cache: probing, remembering failures until a file changes, prefetch, eviction.
#include "platform/sdl/SdlImages.h"

#include "SdlTestKit.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <SDL_image.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace ombrel::platform::sdl {
namespace {

using test::writeTwoColourPng;

class SdlImagesTest : public ::testing::Test
{
protected:
    // A picture of w x 3 pixels named name.png; its path.
    std::string picture(const std::string& name, int w = 4)
    {
        const std::string path = home.path() + name + ".png";
        EXPECT_TRUE(writeTwoColourPng(path, w, 3, 0xFF, 0xFF00));
        return path;
    }
    ombrel::test::TempHome home;
};

// Every file is read and its header checked before the decoder sees it: a tiny file claiming a giant
// picture never reaches the decoder, on the caller's thread or a worker's. A failure is reported and
// remembered once, until the file changes.
TEST_F(SdlImagesTest, BadFilesFailOnceUntilTheyChange)
{
    home.write("broken.png", "\x89PNG\r\n\x1a\n this is not a picture");
    home.write("empty.png", "");
    std::filesystem::create_directories(home.root() / "folder.png");
    // 30000 x 30000 pixels: 3.6 GB if decoded.
    home.write("giant.png",
        std::string("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\x75\x30\0\0\x75\x30\x08\x06\0\0\0", 29));
    // A real JPEG cut short: in its header (refused), and in its data (decoded as far as it goes).
    SurfacePtr surface(SDL_CreateRGBSurfaceWithFormat(0, 64, 64, 32, SDL_PIXELFORMAT_ARGB8888));
    const std::string whole = home.path() + "whole.jpg";
    ASSERT_EQ(IMG_SaveJPG(surface.get(), whole.c_str(), 90), 0) << IMG_GetError();
    std::ifstream in(whole, std::ios::binary);
    const std::string jpeg((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    home.write("cut.jpg", jpeg.substr(0, 40));
    home.write("half.jpg", jpeg.substr(0, jpeg.size() / 2));

    SdlImages images(SdlImages::Limits {}, 1);
    std::vector<std::string> refused;
    images.onRefused = [&](const std::string& path, const std::string& why) {
        refused.push_back(std::filesystem::path(path).filename().string() + ": " + why);
    };
    images.prefetch(home.path() + "giant.png");
    images.waitIdle();
    for (int pass = 0; pass < 2; ++pass)
        for (const char* bad :
            { "missing.png", "broken.png", "empty.png", "folder.png", "", "giant.png", "cut.jpg" })
            EXPECT_FALSE(images.probe(*bad ? home.path() + bad : "")) << bad;
    EXPECT_EQ(images.decodeCount(), 0);
    EXPECT_EQ(refused,
        (std::vector<std::string> {
            "giant.png: the picture claims 30000 x 30000 pixels; at most 16384 a side and 64 Mpx in all are "
            "shown",
            "broken.png: PNG file does not begin with its IHDR chunk",
            "empty.png: the file is empty",
            "cut.jpg: JPEG header is cut short",
        }));
    images.picture(home.path() + "half.jpg"); // no crash; what it shows is the decoder's business
    EXPECT_EQ(images.probe(whole), (runtime::PixelSize { 64, 64 }));
    const std::string path = home.path() + "broken.png";
    const int decodes = images.decodeCount();

    picture("broken", 8);
    // Make sure the replacement's time differs even on a coarse clock.
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(5));
    EXPECT_EQ(images.probe(path), (runtime::PixelSize { 8, 3 }));
    EXPECT_TRUE(images.picture(path));
    EXPECT_EQ(images.decodeCount(), decodes + 1);
    std::filesystem::remove(path);
    EXPECT_FALSE(images.picture(path)) << "a removed file no longer shows";
}

TEST_F(SdlImagesTest, PrefetchDecodesAheadOnce)
{
    SdlImages images;
    for (int i = 0; i < 5; ++i)
        images.prefetch(picture(std::to_string(i), 3 + i));
    images.prefetch(home.path() + "0.png");
    images.waitIdle();
    EXPECT_EQ(images.decodeCount(), 5);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(images.probe(home.path() + std::to_string(i) + ".png"), (runtime::PixelSize { 3 + i, 3 }));
    EXPECT_EQ(images.decodeCount(), 5);
}

TEST_F(SdlImagesTest, LeastRecentlyUsedLeaveFirst)
{
    const std::string a = picture("a"), b = picture("b"), c = picture("c");
    SdlImages::Limits limits;
    limits.maxEntries = 2;
    SdlImages images(limits, 0);
    for (const auto& path : { a, b, a, c, a }) // b is the oldest when c comes
        images.probe(path);
    EXPECT_EQ(images.decodeCount(), 3);
    images.probe(b);
    EXPECT_EQ(images.decodeCount(), 4);

    // A byte limit smaller than one picture still keeps the newest one.
    limits.maxEntries = 100;
    limits.maxBytes = 1;
    SdlImages tiny(limits, 0);
    EXPECT_TRUE(tiny.picture(a));
    EXPECT_TRUE(tiny.picture(b));
    EXPECT_EQ(tiny.cachedCount(), 1u);
}

} // namespace
} // namespace ombrel::platform::sdl
