// Tests of the picture cache: probing, remembering failures until a file changes, prefetch, eviction.
#include "platform/sdl/SdlImages.h"

#include "SdlTestKit.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <filesystem>

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

TEST_F(SdlImagesTest, BadFilesFailOnceUntilTheyChange)
{
    home.write("broken.png", "\x89PNG\r\n\x1a\n this is not a picture");
    home.write("empty.png", "");
    std::filesystem::create_directories(home.root() / "folder.png");
    SdlImages images;
    for (const char* bad : { "missing.png", "broken.png", "empty.png", "folder.png", "" })
        EXPECT_FALSE(images.probe(*bad ? home.path() + bad : "")) << bad;
    const std::string path = home.path() + "broken.png";
    const int decodes = images.decodeCount();
    EXPECT_FALSE(images.probe(path));
    EXPECT_EQ(images.decodeCount(), decodes) << "a failure is remembered";

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
