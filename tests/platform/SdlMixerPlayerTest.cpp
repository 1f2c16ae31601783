// Tests of the SDL_mixer players on SDL's dummy sound device, the silent fallback, and media lengths.
#include "platform/sdl/SdlMixerPlayers.h"

#include "platform/sdl/AvProbe.h"
#include "platform/sdl/RealClock.h"
#include "platform/sdl/SdlEventSource.h"
#include "platform/sdl/SdlMixerPlayer.h"

#include "SdlTestFiles.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace ombrel::platform::sdl {
namespace {

struct RecordingTrace final : runtime::Trace
{
    std::vector<std::string> lines;
    void effect(std::string_view line) override { lines.emplace_back(line); }
};

class SdlMixerPlayerTest : public ::testing::Test
{
protected:
    ombrel::test::TempHome home;
    RealClock clock;
    runtime::EventLoop loop { clock };
    SdlEventSource source;
    RecordingTrace trace;
    std::vector<std::pair<int, int>> changes;

    void SetUp() override
    {
        loop.setSource(&source);
        test::writeSilentWav(home.path() + "com.wav", 0.2);
    }

    // Serves the loop until the player reports a change to state, or a few seconds pass.
    void runUntilChangeTo(MediaPlayer& player, int state)
    {
        player.onPlayStateChange = [this, state](int oldState, int newState) {
            changes.emplace_back(oldState, newState);
            if (newState == state)
                loop.quit();
        };
        loop.runFor(5000);
    }
};

TEST_F(SdlMixerPlayerTest, EffectPlaysToItsEnd)
{
    SdlMixerPlayers players(loop, trace, home.path());
    ASSERT_TRUE(players.hasSound());
    auto fx = players.create("mpFX", MediaKind::Effect);
    fx->setFileName(home.path() + "com.wav");
    EXPECT_EQ(fx->fileName(), home.path() + "com.wav");
    EXPECT_NEAR(fx->duration(), 0.2, 0.01);
    fx->play();
    EXPECT_EQ(fx->playState(), kPlaying);
    runUntilChangeTo(*fx, kStopped);
    EXPECT_EQ(fx->playState(), kStopped);
    // The start reported first, then the end; neither from inside play().
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>> { { 0, 2 }, { 2, 0 } }));
    EXPECT_EQ(trace.lines,
        (std::vector<std::string> { "media mpFX open com.wav", "media mpFX play", "media mpFX end" }));
}

TEST_F(SdlMixerPlayerTest, StopReportsTheChangeOnTheLoop)
{
    SdlMixerPlayers players(loop, trace);
    auto song = players.create("mpSaver", MediaKind::Song);
    test::writeSilentWav(home.path() + "long.wav", 30);
    song->setFileName(home.path() + "long.wav");
    ASSERT_FALSE(song->fileName().empty());
    song->onPlayStateChange = [this](int o, int n) { changes.emplace_back(o, n); };
    song->play();
    song->pause();
    EXPECT_EQ(song->playState(), kPaused);
    song->play();
    song->stop();
    EXPECT_EQ(song->playState(), kStopped);
    EXPECT_TRUE(changes.empty()) << "changes arrive on a later turn, not inside the calls";
    loop.doEvents();
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>> { { 0, 2 }, { 2, 1 }, { 1, 2 }, { 2, 0 } }));
}

TEST_F(SdlMixerPlayerTest, ANewSongEndsTheOtherPlayersSong)
{
    SdlMixerPlayers players(loop, trace);
    auto first = players.create("one", MediaKind::Song);
    auto second = players.create("two", MediaKind::Song);
    test::writeSilentWav(home.path() + "long.wav", 30);
    first->setFileName(home.path() + "long.wav");
    second->setFileName(home.path() + "long.wav");
    first->play();
    second->play();
    runUntilChangeTo(*first, kStopped);
    EXPECT_EQ(first->playState(), kStopped);
    EXPECT_EQ(second->playState(), kPlaying);
}

TEST_F(SdlMixerPlayerTest, OpeningAnotherFileEndsThePlayWithoutAReport)
{
    SdlMixerPlayers players(loop, trace);
    auto fx = players.create("mpFX", MediaKind::Effect);
    test::writeSilentWav(home.path() + "long.wav", 30);
    fx->setFileName(home.path() + "long.wav");
    fx->play();
    loop.doEvents();
    fx->onPlayStateChange = [this](int o, int n) { changes.emplace_back(o, n); };
    fx->setFileName(home.path() + "com.wav");
    EXPECT_EQ(fx->playState(), kStopped);
    fx->play();
    runUntilChangeTo(*fx, kStopped);
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>> { { 0, 2 }, { 2, 0 } }))
        << "the end of the first file is not taken for the end of the second";
}

TEST_F(SdlMixerPlayerTest, FilesThatCannotPlayReadBackEmpty)
{
    SdlMixerPlayers players(loop, trace, home.path());
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
    SdlMixerPlayers players(loop, trace);
    std::vector<std::unique_ptr<MediaPlayer>> all;
    for (int i = 0; i < 40; ++i) {
        all.push_back(players.create("fx" + std::to_string(i), MediaKind::Effect));
        all.back()->setFileName(home.path() + "com.wav");
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
    SdlMixerPlayers players(loop, trace, home.path());
    setenv("SDL_AUDIODRIVER", saved.c_str(), 1);
    EXPECT_FALSE(players.hasSound());

    auto fx = players.create("mpFX", MediaKind::Effect);
    fx->setFileName(home.path() + "com.wav");
    EXPECT_EQ(fx->fileName(), home.path() + "com.wav");
    fx->play();
    runUntilChangeTo(*fx, kStopped);
    EXPECT_EQ(changes.back(), (std::pair<int, int> { 2, 0 }));
    fx->setFileName(home.path() + "missing.wav");
    EXPECT_EQ(fx->fileName(), "");
}

TEST(SdlMixerVolume, HundredthsOfADecibelToMixerLevels)
{
    const struct
    {
        int hundredthsDb;
        int level;
    } rows[] = {
        { 0, 128 },
        { 500, 128 },
        { -600, 64 },
        { -2000, 13 },
        { -4000, 1 },
        { -10000, 0 },
        { -20000, 0 },
        { INT32_MIN, 0 },
        { INT32_MAX, 128 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.hundredthsDb);
        EXPECT_EQ(mixerVolume(row.hundredthsDb), row.level);
    }
}

TEST(AvProbe, MediaDuration)
{
    ombrel::test::TempHome home;
    test::writeSilentWav(home.path() + "a.wav", 1.5);
    home.write("text.mp3", "just some words, no sound at all");
    EXPECT_NEAR(mediaDurationSeconds(home.path() + "a.wav"), 1.5, 0.01);
    EXPECT_EQ(mediaDurationSeconds(home.path() + "text.mp3"), -1);
    EXPECT_EQ(mediaDurationSeconds(home.path() + "missing.wav"), -1);
    EXPECT_EQ(mediaDurationSeconds(""), -1);
}

} // namespace
} // namespace ombrel::platform::sdl
