// The intro film through FFmpeg: pictures and sound decoded, the film's end and Stop reported on the
// loop, a file that is no film reading back empty.
#include "platform/sdl/FfmpegFilmPlayer.h"
#include "platform/sdl/FilmDecoder.h"
#include "platform/sdl/RealClock.h"
#include "platform/sdl/SdlEventSource.h"

#include "TempHome.h"

#include <gtest/gtest.h>

#include <atomic>

namespace ombrel::platform::sdl {
namespace {

struct RecordingTrace final : runtime::Trace {
    std::vector<std::string> lines;
    void effect(std::string_view line) override { lines.emplace_back(line); }
};

std::string demoFilm() { return ombrel::test::sourceDir() + "/demo/intro.mpeg"; }

TEST(FilmDecoderTest, DecodesTheDemoFilmsPicturesInTimeOrderAndItsSound)
{
    auto video = FilmVideo::open(demoFilm());
    ASSERT_NE(video, nullptr);
    EXPECT_EQ(video->size(), (runtime::PixelSize { 320, 240 }));
    std::vector<uint8_t> rgba;
    double at = -1, last = -1;
    int pictures = 0;
    while (video->next(rgba, at)) {
        ASSERT_EQ(rgba.size(), 320u * 240u * 4u);
        EXPECT_GE(at, last);
        last = at;
        ++pictures;
    }
    EXPECT_GT(pictures, 25);
    EXPECT_GT(last, 2.0);

    auto sound = decodeFilmSound(demoFilm(), 44100, 2);
    double seconds = static_cast<double>(sound.size()) / (44100 * 2);
    EXPECT_NEAR(seconds, 3.0, 0.5);
}

TEST(FilmDecoderTest, AFileThatIsNoFilmGivesNothing)
{
    ombrel::test::TempHome home;
    std::string path = home.write("intro.mpeg", "this is not a film");
    EXPECT_EQ(FilmVideo::open(path), nullptr);
    EXPECT_TRUE(decodeFilmSound(path, 44100, 2).empty());
    EXPECT_EQ(FilmVideo::open(home.path() + "missing.mpeg"), nullptr);
}

class FilmPlayerTest : public ::testing::Test {
protected:
    RealClock clock;
    runtime::EventLoop loop { clock };
    SdlEventSource source;
    RecordingTrace trace;
    FilmFrames frames;
    std::vector<std::pair<int, int>> changes;
    std::atomic<int> pictures { 0 };

    void SetUp() override
    {
        loop.setSource(&source);
        frames.onNewFrame = [this] { ++pictures; };
    }
    void runUntilStopped(MediaPlayer& player, int ms)
    {
        player.onPlayStateChange = [this](int oldState, int newState) {
            changes.emplace_back(oldState, newState);
            if (newState == kStopped)
                loop.quit();
        };
        loop.runFor(ms);
    }
};

TEST_F(FilmPlayerTest, PlaysToTheEndAndReportsIt)
{
    FfmpegFilmPlayer player("mpIntro", loop, trace, ombrel::test::sourceDir() + "/demo/", frames);
    player.setFileName(demoFilm());
    ASSERT_EQ(player.fileName(), demoFilm());
    EXPECT_NEAR(player.duration(), 3.0, 0.5);
    player.play();
    EXPECT_EQ(player.playState(), kPlaying);
    runUntilStopped(player, 15000);
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>> { { 0, 2 }, { 2, 0 } }));
    EXPECT_GT(pictures.load(), 25);
    EXPECT_EQ(trace.lines, (std::vector<std::string> { "media mpIntro open intro.mpeg", "media mpIntro play",
                               "media mpIntro end" }));
}

TEST_F(FilmPlayerTest, StopEndsTheFilmAtOnceAndReportsItOnTheLoop)
{
    FfmpegFilmPlayer player("mpIntro", loop, trace, "", frames);
    player.setFileName(demoFilm());
    player.play();
    loop.runFor(300);
    player.stop();
    EXPECT_EQ(player.playState(), kStopped);
    runUntilStopped(player, 2000);
    ASSERT_FALSE(changes.empty());
    EXPECT_EQ(changes.back(), (std::pair<int, int> { 2, 0 }));
    EXPECT_FALSE(frames.has("mpIntro"));
}

TEST_F(FilmPlayerTest, AFileThatCannotBeOpenedReadsBackEmpty)
{
    ombrel::test::TempHome home;
    FfmpegFilmPlayer player("mpIntro", loop, trace, home.path(), frames);
    player.setFileName(home.path() + "intro.mpeg");
    EXPECT_EQ(player.fileName(), "");
    player.play();
    EXPECT_EQ(player.playState(), kStopped);
}

} // namespace
} // namespace ombrel::platform::sdl
