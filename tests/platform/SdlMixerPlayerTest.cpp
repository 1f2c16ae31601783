// Tests of the SDL_mixer players on SDL's dummy sound device, the silent fallback, and media lengths.
#include "platform/sdl/SdlMixerPlayers.h"

#include "platform/sdl/AvProbe.h"
#include "platform/sdl/SdlMixerPlayer.h"

#include "SdlTestKit.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>
#include <vector>

namespace ombrel::platform::sdl {
namespace {

class SdlMixerPlayerTest : public test::RealLoopTest
{
protected:
    SdlMixerPlayerTest()
    {
        test::writeSilentWav(com, 0.2);
        test::writeSilentWav(longWav, 30);
    }
    ombrel::test::TempHome home;
    const std::string com = home.path() + "com.wav";
    const std::string longWav = home.path() + "long.wav";
    SdlMixerPlayers players { loop, trace, home.path() };
};

// Changes are reported on a later turn of the loop, never from inside the calls, and the end last.
TEST_F(SdlMixerPlayerTest, PlayStateChangesArriveOnTheLoop)
{
    ASSERT_TRUE(players.hasSound());
    auto song = players.create("mpSaver", MediaKind::Song);
    song->setFileName(longWav);
    recordChanges(*song);
    song->play();
    song->pause();
    EXPECT_EQ(song->playState(), kPaused);
    song->play();
    song->stop();
    EXPECT_TRUE(changes.empty());
    loop.doEvents();
    EXPECT_EQ(changes, (Changes { { 0, 2 }, { 2, 1 }, { 1, 2 }, { 2, 0 } }));

    changes.clear();
    auto fx = players.create("mpFX", MediaKind::Effect);
    fx->setFileName(com);
    EXPECT_NEAR(fx->duration(), 0.2, 0.01);
    fx->play();
    runUntilChangeTo(*fx, kStopped);
    EXPECT_EQ(changes, (Changes { { 0, 2 }, { 2, 0 } }));
    EXPECT_EQ(trace.lines,
        (std::vector<std::string> { "media mpSaver open long.wav", "media mpSaver play",
            "media mpSaver pause", "media mpSaver play", "media mpSaver stop", "media mpFX open com.wav",
            "media mpFX play", "media mpFX end" }));
}

TEST_F(SdlMixerPlayerTest, ANewSongOrFileEndsTheOldPlayWithoutTakingItsEnd)
{
    auto first = players.create("one", MediaKind::Song);
    auto second = players.create("two", MediaKind::Song);
    first->setFileName(longWav);
    second->setFileName(longWav);
    first->play();
    second->play();
    runUntilChangeTo(*first, kStopped);
    EXPECT_EQ(second->playState(), kPlaying);

    auto fx = players.create("mpFX", MediaKind::Effect);
    fx->setFileName(longWav);
    fx->play();
    loop.doEvents();
    recordChanges(*fx);
    fx->setFileName(com);
    EXPECT_EQ(fx->playState(), kStopped);
    fx->play();
    runUntilChangeTo(*fx, kStopped);
    EXPECT_EQ(changes, (Changes { { 0, 2 }, { 2, 0 } })) << "the first file's end is not the second's";
}

TEST_F(SdlMixerPlayerTest, FilesThatCannotPlayReadBackEmpty)
{
    home.write("notes.mp3", "these are not sounds");
    for (auto kind : { MediaKind::Effect, MediaKind::Song, MediaKind::Film }) {
        auto player = players.create("p", kind);
        for (const char* name : { "missing.wav", "notes.mp3", "" }) {
            SCOPED_TRACE(name);
            player->setFileName(std::string(*name ? home.path() : "") + name);
            EXPECT_EQ(player->fileName(), "");
            EXPECT_EQ(player->duration(), 0);
            player->play();
            EXPECT_EQ(player->playState(), kStopped);
        }
    }
    EXPECT_EQ(trace.lines.front(), "media p open missing.wav failed");
}

TEST_F(SdlMixerPlayerTest, ManyPlayersEachGetAChannel)
{
    std::vector<std::unique_ptr<MediaPlayer>> all;
    for (int i = 0; i < 40; ++i) {
        all.push_back(players.create("fx" + std::to_string(i), MediaKind::Effect));
        all.back()->setFileName(com);
        all.back()->play();
        ASSERT_EQ(all.back()->playState(), kPlaying) << i;
    }
    all.erase(all.begin() + 3); // a player gone with its end still to come must be harmless
    runUntilChangeTo(*all.back(), kStopped);
    EXPECT_EQ(all.front()->playState(), kStopped);
}

TEST_F(SdlMixerPlayerTest, WithoutASoundDeviceThePlayersAreSilentButKeepTime)
{
    const char* before = std::getenv("SDL_AUDIODRIVER");
    std::string saved = before ? before : "";
    setenv("SDL_AUDIODRIVER", "no-such-driver", 1);
    SdlMixerPlayers silent(loop, trace, home.path());
    setenv("SDL_AUDIODRIVER", saved.c_str(), 1);
    EXPECT_FALSE(silent.hasSound());
    auto fx = silent.create("mpFX", MediaKind::Effect);
    fx->setFileName(com);
    EXPECT_EQ(fx->fileName(), com);
    fx->play();
    runUntilChangeTo(*fx, kStopped);
    EXPECT_EQ(changes.back(), (std::pair<int, int> { 2, 0 }));
    fx->setFileName(home.path() + "missing.wav");
    EXPECT_EQ(fx->fileName(), "");
}

TEST(SdlMixerVolume, HundredthsOfADecibelToMixerLevels)
{
    const std::pair<int, int> rows[] = { { 500, 128 }, { -600, 64 }, { -2000, 13 }, { -4000, 1 },
        { -10000, 0 }, { INT_MIN, 0 }, { INT_MAX, 128 } };
    for (const auto& [hundredthsDb, level] : rows)
        EXPECT_EQ(mixerVolume(hundredthsDb), level) << hundredthsDb;
}

TEST(AvProbe, MediaDuration)
{
    ombrel::test::TempHome home;
    test::writeSilentWav(home.path() + "a.wav", 1.5);
    home.write("text.mp3", "just some words, no sound at all");
    EXPECT_NEAR(mediaDurationSeconds(home.path() + "a.wav"), 1.5, 0.01);
    for (const std::string& bad : { home.path() + "text.mp3", home.path() + "missing.wav", std::string() })
        EXPECT_EQ(mediaDurationSeconds(bad), -1) << bad;
}

} // namespace
} // namespace ombrel::platform::sdl
