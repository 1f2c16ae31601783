// The intro film through FFmpeg: pictures and sound decoded, the film's end and Stop reported on the
// loop, a file that is no film reading back empty.
#include "platform/sdl/FfmpegFilmPlayer.h"
#include "platform/sdl/FilmDecoder.h"

#include "SdlTestKit.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <atomic>

namespace ombrel::platform::sdl {
namespace {

std::string demoFilm()
{
    return ombrel::test::sourceDir() + "/demo/intro.mpeg";
}

TEST(FilmDecoderTest, DecodesTheDemoFilmsPicturesInTimeOrderAndItsSound)
{
    auto video = FilmVideo::open(demoFilm());
    ASSERT_NE(video, nullptr);
    EXPECT_EQ(video->size(), (runtime::PixelSize { 320, 240 }));
    std::vector<uint8_t> rgba;
    double at = -1, last = -1;
    int pictures = 0;
    for (; video->next(rgba, at); ++pictures, last = at) {
        ASSERT_EQ(rgba.size(), 320u * 240u * 4u);
        EXPECT_GE(at, last);
    }
    EXPECT_GT(pictures, 25);
    EXPECT_GT(last, 2.0);
    EXPECT_NEAR(static_cast<double>(decodeFilmSound(demoFilm(), 44100, 2).size()) / (44100 * 2), 3.0, 0.5);
}

class FilmPlayerTest : public test::RealLoopTest
{
protected:
    FilmPlayerTest()
    {
        frames.onNewFrame = [this] { ++pictures; };
    }
    FilmFrames frames;
    std::atomic<int> pictures { 0 };
};

TEST_F(FilmPlayerTest, PlaysToTheEndAndReportsIt)
{
    FfmpegFilmPlayer player("mpIntro", loop, trace, ombrel::test::sourceDir() + "/demo/", frames);
    player.setFileName(demoFilm());
    EXPECT_NEAR(player.duration(), 3.0, 0.5);
    player.play();
    EXPECT_EQ(player.playState(), kPlaying);
    runUntilChangeTo(player, kStopped, 15000);
    EXPECT_EQ(changes, (Changes { { 0, 2 }, { 2, 0 } }));
    EXPECT_GT(pictures.load(), 25);
    EXPECT_EQ(trace.lines,
        (std::vector<std::string> {
            "media mpIntro open intro.mpeg", "media mpIntro play", "media mpIntro end" }));
}

TEST_F(FilmPlayerTest, StopEndsTheFilmAtOnceAndReportsItOnTheLoop)
{
    FfmpegFilmPlayer player("mpIntro", loop, trace, "", frames);
    player.setFileName(demoFilm());
    player.play();
    loop.runFor(300);
    player.stop();
    EXPECT_EQ(player.playState(), kStopped);
    runUntilChangeTo(player, kStopped, 2000);
    EXPECT_EQ(changes, (Changes { { 2, 0 } }));
    EXPECT_FALSE(frames.has("mpIntro"));
}

TEST_F(FilmPlayerTest, AFileThatIsNoFilmGivesNothingAndReadsBackEmpty)
{
    ombrel::test::TempHome home;
    for (const std::string& path :
        { home.write("intro.mpeg", "this is not a film"), home.path() + "gone.mpeg" }) {
        SCOPED_TRACE(path);
        EXPECT_EQ(FilmVideo::open(path), nullptr);
        EXPECT_TRUE(decodeFilmSound(path, 44100, 2).empty());
        FfmpegFilmPlayer player("mpIntro", loop, trace, home.path(), frames);
        player.setFileName(path);
        EXPECT_EQ(player.fileName(), "");
        player.play();
        EXPECT_EQ(player.playState(), kStopped);
    }
}

} // namespace
} // namespace ombrel::platform::sdl
