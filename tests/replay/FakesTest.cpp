// Tests of the fakes the replay harness stands on, where the scenario traces do not already pin them:
// pausing media, a failed open, process paths, picture headers, text metrics and trace escaping.
#include "platform/fake/FakeFonts.h"
#include "platform/fake/FakeImages.h"
#include "platform/fake/FakeMediaPlayer.h"
#include "platform/fake/FakeProcesses.h"
#include "platform/fake/HomeRelative.h"
#include "replay/TraceWriter.h"
#include "runtime/EventSource.h"

#include "RuntimeFixture.h"
#include "TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace ombrel::platform::fake {
namespace {

using ::testing::ElementsAre;

class FakeMediaPlayerTest : public ::testing::Test {
protected:
    FakeMediaPlayerTest()
    {
        loop.setSource(&jumper);
        player.onPlayStateChange = [this](int from, int to) {
            changes.push_back(std::to_string(loop.now()) + " " + std::to_string(from) + ">" + std::to_string(to));
        };
    }

    runtime::VirtualClock clock;
    test::JumpingSource jumper { clock };
    runtime::EventLoop loop { clock };
    std::ostringstream text;
    replay::TraceWriter trace { clock, text };
    FakeMediaPlayer player { "mpFX", loop, trace,
                             [](const std::string& path) { return path.ends_with("missing.mp3") ? -1.0 : 1.5; },
                             "/cab/" };
    std::vector<std::string> changes;
};

TEST_F(FakeMediaPlayerTest, PauseKeepsWhatIsLeftAndAFailedOpenStopsWithoutAChange)
{
    player.setFileName("song.mp3");
    player.play();
    loop.runUntil(1000);
    player.pause();
    loop.runUntil(5000);
    player.play();
    loop.run();
    EXPECT_THAT(changes, ElementsAre("0 0>2", "1000 2>1", "5000 1>2", "5500 2>0"));

    changes.clear();
    player.play();
    player.setFileName("/cab/missing.mp3");
    EXPECT_EQ(player.fileName(), "");
    player.play();
    loop.run();
    EXPECT_THAT(changes, ElementsAre("5500 0>2")) << "the cut-off play raises no stop of its own";
}

TEST_F(FakeMediaPlayerTest, StateChangeAfterThePlayerIsGoneIsDropped)
{
    auto shortLived = std::make_unique<FakeMediaPlayer>("mpX", loop, trace, [](const std::string&) { return 1.0; });
    bool called = false;
    shortLived->onPlayStateChange = [&](int, int) { called = true; };
    shortLived->setFileName("a.mp3");
    shortLived->play();
    shortLived.reset();
    loop.run();
    EXPECT_FALSE(called);
}

TEST(FakeProcesses, TracesPathsBelowTheProgramsFolderAsRelative)
{
    // The scenarios start their programs by relative names, so only this shows the shortening.
    std::ostringstream text;
    runtime::VirtualClock clock;
    replay::TraceWriter trace(clock, text);
    FakeProcesses processes(trace, "/cab/");
    EXPECT_EQ(processes.start("/cab/emu/mame.exe pacman", "/cab/emu/"), 1);
    processes.shellExecute("Play", "/cab/roms/x.vpt", "/cab/roms/");
    EXPECT_EQ(text.str(), "0 launch emu/mame.exe pacman | in emu/\n0 shell Play roms/x.vpt | in roms/\n");
}

TEST(FakeImages, SizesFromPngGifAndJpegHeaders)
{
    test::TempHome home;
    using namespace std::string_literals;
    const std::string png = "\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\x01\x40\0\0\0\xf0"s + std::string(20, '\0');
    const std::pair<std::string, std::optional<runtime::PixelSize>> rows[] = {
        { png, runtime::PixelSize { 320, 240 } },
        { "GIF89a\x20\x03\x58\x02"s + std::string(10, '\0'), runtime::PixelSize { 800, 600 } },
        { "\xff\xd8\xff\xe0\0\x04xx\xff\xc0\0\x11\x08\x00\x78\x00\xa0"s + std::string(12, '\0'),
            runtime::PixelSize { 160, 120 } },
        { png.substr(0, 20), std::nullopt },
        { "\xff\xd8\xff\xe0\0\x01"s, std::nullopt },
    };
    FakeImages images;
    for (const auto& [bytes, size] : rows)
        EXPECT_EQ(images.probe(home.write("a.img", bytes)), size) << bytes.size();
    EXPECT_EQ(images.probe(home.path() + "absent.png"), std::nullopt);
}

TEST(FakeFonts, MetricsFollowTheRule)
{
    FakeFonts fonts;
    // 8.25 pt is 11 px: lines of 13 px, characters of 6.6 px; "été" is 3 characters.
    const runtime::FontSpec small { "Arial", 8.25, false };
    EXPECT_EQ(fonts.measure(small, "\xc3\xa9t\xc3\xa9"), (runtime::PixelSize { 20, 13 }));
    EXPECT_EQ(fonts.measure({ "Arial", 1e300, false }, "x").h, fonts.measure({ "Arial", 1e301, false }, "x").h);
    EXPECT_EQ(fonts.lineHeight({ "Arial", -5, false }), 0);
}

TEST(TraceText, PathsDropTheProgramsFolderAndOneEffectStaysOneLine)
{
    EXPECT_EQ(homeRelative("\"/cab/a b/x.exe\" -rompath=/cab/roms/", "/cab/"), "\"a b/x.exe\" -rompath=roms/");
    EXPECT_EQ(homeRelative("/cabinet/x /other/cab/x", "/cab/"), "/cabinet/x /other/cab/x");
    EXPECT_EQ(homeRelative("/cab", "/cab/"), ".");

    runtime::VirtualClock clock;
    clock.advanceTo(42);
    std::ostringstream text;
    replay::TraceWriter trace(clock, text);
    trace.effect("dump caption \"a\r\nb\"\ttab \x01 C:\\games");
    EXPECT_EQ(text.str(), "42 dump caption \"a\\r\\nb\"\\ttab \\x01 C:\\games\n");
}

} // namespace
} // namespace ombrel::platform::fake
