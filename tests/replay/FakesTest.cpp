// Tests of the fakes the replay harness and the unit tests stand on: media timing, processes, picture
// headers, text metrics, trace paths and trace escaping.
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

// The loop's clock jumps to each deadline.
using Jumper = test::JumpingSource;

class FakeMediaPlayerTest : public ::testing::Test {
protected:
    FakeMediaPlayerTest()
    {
        loop.setSource(&jumper);
        player.onPlayStateChange = [this](int from, int to) {
            changes.push_back(std::to_string(loop.now()) + " " + std::to_string(from) + ">" + std::to_string(to));
        };
    }
    std::vector<std::string> lines() const
    {
        std::vector<std::string> out;
        std::istringstream in(text.str());
        for (std::string line; std::getline(in, line);)
            out.push_back(line);
        return out;
    }

    runtime::VirtualClock clock;
    Jumper jumper { clock };
    runtime::EventLoop loop { clock };
    std::ostringstream text;
    replay::TraceWriter trace { clock, text };
    FakeMediaPlayer player { "mpFX", loop, trace,
                             [](const std::string& path) { return path.ends_with("missing.mp3") ? -1.0 : 1.5; },
                             "/cab/" };
    std::vector<std::string> changes;
};

TEST_F(FakeMediaPlayerTest, PlayEndsAfterTheFilesLength)
{
    player.setFileName("/cab/omthemes/x/com.mp3");
    EXPECT_EQ(player.fileName(), "/cab/omthemes/x/com.mp3");
    EXPECT_DOUBLE_EQ(player.duration(), 1.5);
    player.play();
    EXPECT_EQ(player.playState(), kPlaying);
    loop.run();
    EXPECT_EQ(player.playState(), kStopped);
    EXPECT_THAT(changes, ElementsAre("0 0>2", "1500 2>0"));
    EXPECT_THAT(lines(), ElementsAre("0 media mpFX open omthemes/x/com.mp3", "0 media mpFX play", "1500 media mpFX end"));
}

TEST_F(FakeMediaPlayerTest, PauseKeepsWhatIsLeftToPlay)
{
    player.setFileName("song.mp3");
    player.play();
    loop.runUntil(1000);
    player.pause();
    loop.runUntil(5000);
    EXPECT_EQ(player.playState(), kPaused);
    player.play();
    loop.run();
    EXPECT_THAT(changes, ElementsAre("0 0>2", "1000 2>1", "5000 1>2", "5500 2>0"));
}

TEST_F(FakeMediaPlayerTest, FileThatCannotBeOpenedReadsBackEmptyAndDoesNotPlay)
{
    player.setFileName("a.mp3");
    player.play();
    player.setFileName("/cab/missing.mp3");
    EXPECT_EQ(player.fileName(), "");
    EXPECT_EQ(player.playState(), kStopped);
    player.play();
    loop.run();
    // The cut-off play raises no stop of its own: only the start of a.mp3 is reported.
    EXPECT_THAT(changes, ElementsAre("0 0>2"));
    EXPECT_THAT(lines(), ElementsAre("0 media mpFX open a.mp3", "0 media mpFX play",
                                     "0 media mpFX open missing.mp3 failed"));
}

TEST_F(FakeMediaPlayerTest, StopAndVolumeAreTracedOnlyWhenTheyChangeSomething)
{
    player.stop();
    player.setVolume(0);
    player.setVolume(-20000);
    EXPECT_EQ(player.volume(), -10000);
    player.setFileName("a.mp3");
    player.play();
    player.stop();
    player.setFileName("");
    EXPECT_THAT(lines(), ElementsAre("0 media mpFX volume -10000", "0 media mpFX open a.mp3", "0 media mpFX play",
                                     "0 media mpFX stop", "0 media mpFX close"));
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

TEST(FakeProcesses, IdsCountFromOneAndWaitsUseTheHook)
{
    std::ostringstream text;
    runtime::VirtualClock clock;
    replay::TraceWriter trace(clock, text);
    FakeProcesses processes(trace, "/cab/");

    EXPECT_EQ(processes.start("/cab/emu/mame.exe pacman", "/cab/emu/"), 1);
    processes.waitForExit(1); // no hook: ends at once
    EXPECT_FALSE(processes.running(1));

    EXPECT_EQ(processes.start("mame galaga", "/cab/"), 2);
    processes.onWait = [](int) { return false; }; // the run ended first
    processes.waitForExit(2);
    EXPECT_TRUE(processes.running(2));
    processes.waitForExit(0); // nothing started: returns at once

    processes.setStartSucceeds(false);
    EXPECT_EQ(processes.start("gone", "/cab/"), 0);
    processes.shellExecute("Play", "/cab/roms/x.vpt", "/cab/roms/");
    EXPECT_EQ(text.str(), "0 launch emu/mame.exe pacman | in emu/\n"
                          "0 process exit 1\n"
                          "0 launch mame galaga | in .\n"
                          "0 launch gone | in . failed\n"
                          "0 shell Play roms/x.vpt | in roms/\n");
}

TEST(FakeImages, SizesFromPngGifAndJpegHeaders)
{
    test::TempHome home;
    using namespace std::string_literals;
    const std::string png = "\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\x01\x40\0\0\0\xf0"s + std::string(20, '\0');
    const std::string gif = "GIF89a\x20\x03\x58\x02"s + std::string(10, '\0');
    const std::string jpeg = "\xff\xd8\xff\xe0\0\x04xx\xff\xc0\0\x11\x08\x00\x78\x00\xa0"s + std::string(12, '\0');
    struct Row {
        const char* name;
        std::string bytes;
        std::optional<runtime::PixelSize> size;
    };
    const Row rows[] = {
        { "a.png", png, runtime::PixelSize { 320, 240 } },
        { "a.gif", gif, runtime::PixelSize { 800, 600 } },
        { "a.jpg", jpeg, runtime::PixelSize { 160, 120 } },
        { "cut.png", png.substr(0, 20), std::nullopt },
        { "text.png", "not a picture", std::nullopt },
        { "bad.jpg", "\xff\xd8\xff\xe0\0\x01"s, std::nullopt },
        { "empty.gif", "", std::nullopt },
    };
    FakeImages images;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(images.probe(home.write(row.name, row.bytes)), row.size);
    }
    EXPECT_EQ(images.probe(home.path() + "absent.png"), std::nullopt);
}

TEST(FakeFonts, MetricsFollowTheRule)
{
    FakeFonts fonts;
    // 8.25 pt is 11 px: lines of 13 px, characters of 6.6 px.
    const runtime::FontSpec small { "Arial", 8.25, false };
    EXPECT_EQ(fonts.lineHeight(small), 13);
    EXPECT_EQ(fonts.measure(small, "abc"), (runtime::PixelSize { 20, 13 }));
    EXPECT_EQ(fonts.measure(small, "\xc3\xa9t\xc3\xa9"), (runtime::PixelSize { 20, 13 })); // "été": 3 characters
    EXPECT_EQ(fonts.measure({ "Arial", 12, true }, ""), (runtime::PixelSize { 0, 19 }));
    EXPECT_EQ(fonts.measure({ "Arial", 1e300, false }, "x").h, fonts.measure({ "Arial", 1e301, false }, "x").h);
    EXPECT_EQ(fonts.lineHeight({ "Arial", -5, false }), 0);
}

TEST(HomeRelative, DropsTheProgramsFolderWhereAPathBegins)
{
    struct Row {
        const char* text;
        const char* shown;
    };
    const Row rows[] = {
        { "/cab/emu/mame.exe", "emu/mame.exe" },
        { "/cab/", "." },
        { "/cab", "." },
        { "\"/cab/a b/x.exe\" -rompath=/cab/roms/", "\"a b/x.exe\" -rompath=roms/" },
        { "/other/cab/x", "/other/cab/x" },
        { "/cabinet/x", "/cabinet/x" },
        { "", "" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(homeRelative(row.text, "/cab/"), row.shown);
    }
}

TEST(TraceWriter, OneEffectStaysOneLine)
{
    runtime::VirtualClock clock;
    clock.advanceTo(42);
    std::ostringstream text;
    replay::TraceWriter trace(clock, text);
    trace.effect("dump caption \"a\r\nb\"\ttab \x01 C:\\games");
    EXPECT_EQ(text.str(), "42 dump caption \"a\\r\\nb\"\\ttab \\x01 C:\\games\n");
}

} // namespace
} // namespace ombrel::platform::fake
