// Tests of the picture cache: probing, remembering failures until a file changes, prefetch, eviction.
#include "platform/sdl/SdlImages.h"

#include "SdlTestKit.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace ombrel::platform::sdl {
namespace {

using test::writeTwoColourPng;

TEST(SdlImages, ProbeTellsSizeOrFailure)
{
    ombrel::test::TempHome home;
    ASSERT_TRUE(writeTwoColourPng(home.path() + "snap.png", 6, 4, 0xFF0000, 0x00FF00));
    home.write("broken.png", "\x89PNG\r\n\x1a\n this is not a picture");
    home.write("empty.png", "");
    std::filesystem::create_directories(home.root() / "folder.png");

    SdlImages images;
    EXPECT_EQ(images.probe(home.path() + "snap.png"), (runtime::PixelSize { 6, 4 }));
    for (const std::string& bad : { home.path() + "missing.png", home.path() + "broken.png",
             home.path() + "empty.png", home.path() + "folder.png", std::string() })
        EXPECT_FALSE(images.probe(bad)) << bad;
}

TEST(SdlImages, DecodesOnceUntilTheFileChanges)
{
    ombrel::test::TempHome home;
    const std::string path = home.path() + "logo.png";
    home.write("logo.png", "not a picture");

    SdlImages images;
    EXPECT_FALSE(images.probe(path));
    EXPECT_FALSE(images.probe(path));
    EXPECT_EQ(images.decodeCount(), 1) << "a failure is remembered";

    ASSERT_TRUE(writeTwoColourPng(path, 8, 2, 0, 0));
    // Make sure the replacement's time differs even on a coarse clock.
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(5));
    EXPECT_EQ(images.probe(path), (runtime::PixelSize { 8, 2 }));
    EXPECT_EQ(images.decodeCount(), 2);
    EXPECT_TRUE(images.picture(path));
    EXPECT_EQ(images.decodeCount(), 2);

    std::filesystem::remove(path);
    EXPECT_FALSE(images.picture(path)) << "a removed file no longer shows";
}

TEST(SdlImages, PrefetchDecodesAhead)
{
    ombrel::test::TempHome home;
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(writeTwoColourPng(home.path() + std::to_string(i) + ".png", 3 + i, 3, 0xFF, 0xFF00));

    SdlImages images;
    for (int i = 0; i < 5; ++i)
        images.prefetch(home.path() + std::to_string(i) + ".png");
    images.prefetch(home.path() + "0.png");
    images.waitIdle();
    EXPECT_EQ(images.decodeCount(), 5);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(images.probe(home.path() + std::to_string(i) + ".png"), (runtime::PixelSize { 3 + i, 3 }));
    EXPECT_EQ(images.decodeCount(), 5) << "probes after a prefetch decode nothing";
}

TEST(SdlImages, LeastRecentlyUsedLeaveFirst)
{
    ombrel::test::TempHome home;
    const std::string a = home.path() + "a.png";
    const std::string b = home.path() + "b.png";
    const std::string c = home.path() + "c.png";
    for (const auto& path : { a, b, c })
        ASSERT_TRUE(writeTwoColourPng(path, 4, 4, 0, 0));

    SdlImages::Limits limits;
    limits.maxEntries = 2;
    SdlImages images(limits, 0);
    images.probe(a);
    images.probe(b);
    images.probe(a); // b is now the oldest
    images.probe(c);
    EXPECT_EQ(images.cachedCount(), 2u);
    EXPECT_EQ(images.decodeCount(), 3);
    images.probe(a);
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
