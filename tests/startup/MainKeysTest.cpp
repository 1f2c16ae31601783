// The browser's keyboard on a whole cabinet: steps of held keys at the scroll rate, the release's
// redraw and click, the shift views, the saver countdown, the sound switch, the mouse spinner, and the
// exit command to the program's end.
#include "CabinetFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <array>
#include <string>
#include <tuple>

using namespace ombrel;
using namespace ombrel::test::vk;
using test::CabinetFixture;
using test::CabinetSetup;

namespace {

const std::string kPop = "media mpFX open omthemes/Skin/pop.mp3";

void hold(CabinetFixture& fx, int key, int64_t ms)
{
    fx.press(key);
    fx.runFor(ms);
    fx.release(key);
}

// The path keys and the joystick go three times slower than the rows; at 15 or below the rate is not
// taken and everything steps every 75 ms.
TEST(MainKeysTest, HeldKeyStepsAtTheScrollRate)
{
    // Scroll rate, key, rows stepped from row 50, lists stepped from list 1, the joystick's poll.
    using Case = std::array<int, 5>;
    const Case cases[] = { { 15, kDown, 2, 0, 75 }, { 16, kDown, 10, 0, 48 }, { 16, kUp, -10, 0, 48 },
        { 15, kRight, 0, 2, 75 }, { 16, kRight, 0, 3, 48 }, { 20000, kRight, 0, 2, 75 } };
    for (const auto& [scrollRate, key, rowSteps, pathSteps, joystickMs] : cases) {
        SCOPED_TRACE(scrollRate);
        CabinetFixture fx;
        fx.boot({ .scrollRate = scrollRate, .listSizes = { 100, 3, 3, 3, 3 } });
        fx.main().c.List1.setListIndex(50);
        hold(fx, key, 170);
        if (pathSteps == 0) {
            EXPECT_EQ(fx.listIndex(), 50 + rowSteps);
        }
        EXPECT_EQ(fx.main().timjoy.interval(), joystickMs);
        const int index = fx.listIndex();
        fx.runFor(1000); // nothing moves once the key is up
        EXPECT_EQ(fx.listIndex(), index);
        EXPECT_EQ(fx.curPath(), 1 + pathSteps);
    }
}

// Each step wishes for the pictures of the rows the held key reaches next; a new list has no
// direction yet, so only its neighbours are wished for.
TEST(MainKeysTest, StepsWishForThePicturesOfTheRowsAhead)
{
    CabinetFixture fx;
    fx.boot({ .listSizes = { 100, 100 } });
    // The games of the wishes, in order, each once (the four panels wish for the same game in turn).
    auto wishedEntries = [&fx] {
        std::vector<int> entries;
        const auto& games = fx.cabinet().catalogue.games[static_cast<size_t>(fx.curPath())];
        for (const platform::PictureWish& wish : fx.images.wishes) {
            const std::string name = std::filesystem::path(wish.path).stem().string();
            int entry = 0;
            while (entry < 100 && games.at(entry + 1, 1) != name)
                ++entry;
            if (entries.empty() || entries.back() != entry)
                entries.push_back(entry);
        }
        return entries;
    };
    fx.main().c.List1.setListIndex(50);
    hold(fx, kDown, 80);
    EXPECT_EQ(wishedEntries(), (std::vector<int> { 51, 52, 53, 54, 55, 50 }));
    hold(fx, kUp, 80);
    EXPECT_EQ(wishedEntries(), (std::vector<int> { 50, 49, 48, 47, 46, 51 }));
    const int midRow = fx.cabinet().run.midRow;
    ASSERT_GT(midRow, 1);
    hold(fx, kPageDown, 80);
    EXPECT_EQ(wishedEntries(), (std::vector<int> { 50 + midRow, 50 + 2 * midRow, 50 + 3 * midRow,
                                   50 + 4 * midRow, 50 + 5 * midRow, 51 + midRow, 49 + midRow }));
    hold(fx, kRight, 230);
    ASSERT_EQ(fx.curPath(), 2);
    const int entry = fx.listIndex();
    EXPECT_EQ(wishedEntries(), (std::vector<int> { entry, entry + 1 }));
}

TEST(MainKeysTest, TheReleaseClicksOnceMoreUnlessMutedButTheKeyboardsRepeatsDoNothing)
{
    CabinetFixture fx;
    fx.boot({});
    fx.mark();
    hold(fx, kDown, 50); // shorter than a step: nothing moves, but the release clicks
    EXPECT_EQ(fx.listIndex(), 0);
    EXPECT_EQ(fx.countSinceMark(kPop), 1);
    fx.runFor(100);
    fx.mark();
    fx.press(kDown);
    for (int i = 0; i < 5; ++i) {
        fx.runFor(30);
        fx.press(kDown);
    }
    fx.runFor(20);
    fx.release(kDown);
    EXPECT_EQ(fx.listIndex(), 2);
    EXPECT_EQ(fx.countSinceMark(kPop), 3);

    // Releasing either of two held keys stops both.
    fx.press(kUp);
    fx.press(kRight);
    fx.runFor(230);
    EXPECT_EQ(fx.curPath(), 2);
    fx.release(kUp);
    const int index = fx.listIndex();
    fx.runFor(500);
    EXPECT_EQ(fx.curPath(), 2);
    EXPECT_EQ(fx.listIndex(), index);

    // Mute stops the playing click and silences the next ones.
    fx.tap(kDown);
    fx.mark();
    fx.press(kM);
    EXPECT_TRUE(fx.cabinet().saved.muted);
    EXPECT_EQ(fx.countSinceMark("media mpFX stop"), 1);
    fx.release(kM);
    fx.runFor(799);
    EXPECT_TRUE(fx.active("frmMute"));
    fx.runFor(1);
    EXPECT_TRUE(fx.active("Main"));
    hold(fx, kDown, 170);
    EXPECT_EQ(fx.listIndex(), index + 2);
    EXPECT_EQ(fx.countSinceMark(kPop), 0);
}

TEST(MainKeysTest, MovementKeyWithShiftCtrlOrAltShowsItsPictureFullScreen)
{
    const std::tuple<int, const char*, int> cases[]
        = { { kDown, "xScreen", runtime::kCtrlMask }, { kPageDown, "xFlyer", runtime::kAltMask },
              { kPageUp, "xCabinet", runtime::kShiftMask | runtime::kCtrlMask } };
    for (const auto& [key, name, shift] : cases) {
        SCOPED_TRACE(name);
        CabinetFixture fx;
        fx.boot({});
        fx.main().c.List1.setListIndex(5);
        const std::string picture = fx.home.write(std::string("art/") + name + ".png", test::pngHeader(4, 3));
        auto* panel = dynamic_cast<runtime::PictureControl*>(fx.main().find(name));
        ASSERT_TRUE(panel && panel->setFileName(picture));
        fx.press(key, shift);
        fx.runFor(300);
        fx.release(key, shift);
        EXPECT_TRUE(fx.active("ScreenSav"));
        EXPECT_FALSE(fx.cabinet().run.saverAuto);
        EXPECT_EQ(fx.cabinet().run.curPic, picture);
        fx.tap(kEsc);
        EXPECT_TRUE(fx.active("Main"));
        EXPECT_EQ(fx.listIndex(), 5);
    }
}

// A key without a command restarts the countdown all the same, a held key stops it until its release,
// and a delay of -1 never opens the saver, though its key still does.
TEST(MainKeysTest, SaverOpensTheDelayAfterTheLastKeyUp)
{
    const std::pair<double, int> cases[] = { { 5, 0 }, { 5, 20000 }, { -1, 0 } }; // delay, hold
    for (const auto& [delay, holdMs] : cases) {
        SCOPED_TRACE(holdMs);
        CabinetFixture fx;
        fx.boot({ .saverDelay = delay });
        fx.press(kA);
        fx.runFor(holdMs);
        EXPECT_FALSE(fx.showing("ScreenSav"));
        fx.release(kA);
        fx.runFor((delay > 0 ? static_cast<int64_t>(delay * 1000) : 600'000) - 1);
        EXPECT_FALSE(fx.showing("ScreenSav"));
        fx.runFor(1);
        EXPECT_EQ(fx.active("ScreenSav"), delay > 0);
        if (delay < 0)
            fx.tap(kFive);
        EXPECT_TRUE(fx.active("ScreenSav"));
        fx.tap(kEsc);
        EXPECT_TRUE(fx.active("Main"));
        EXPECT_EQ(fx.cabinet().run.saverCount, delay);
    }
}

TEST(MainKeysTest, MouseSpinnerStepsOnceATickAndJumpsBeforeTheEdges)
{
    CabinetFixture fx;
    fx.boot({});
    startup::MainForm& main = fx.main();
    main.c.List1.setListIndex(50);
    fx.cursor.moveTo(100, 40);
    main.lastCursor = { 100, 40 };
    main.timscroller2.setEnabled(true);
    // The browser is 640 pixels wide: at 610 the pointer jumps to 31, below 31 to 609, and the jump
    // reads as one step back on the next tick. Each tick: where the mouse goes (-1: stays), the index,
    // where the pointer is after the tick.
    const int ticks[][3] = { { 110, 51, 110 }, { -1, 51, 110 }, { 100, 50, 100 }, { 615, 51, 31 },
        { -1, 50, 31 }, { 20, 49, 609 }, { -1, 50, 609 } };
    for (const auto& tick : ticks) {
        SCOPED_TRACE(tick[0]);
        if (tick[0] >= 0)
            fx.cursor.moveTo(tick[0], 40);
        fx.runFor(150);
        EXPECT_EQ(fx.listIndex(), tick[1]);
        EXPECT_EQ(fx.cursor.position().x, tick[2]);
    }
}

// Exit saves the place and the key map and ends when the goodbye has played (demo-keys). A key map that
// is a link leading nowhere cannot be written (what becomes of the link is the file writer's test): the
// owner is told why, and nothing else stops.
TEST(MainKeysTest, ExitSavesThePlaceAndEndsWhenTheGoodbyeHasPlayed)
{
    CabinetFixture fx;
    fx.boot({ .scrollRate = 15 });
    std::filesystem::remove(fx.home.root() / "omkeys.cfg");
    std::filesystem::create_symlink("shared/omkeys.cfg", fx.home.root() / "omkeys.cfg");
    hold(fx, kRight, 80);
    fx.main().c.List1.setListIndex(2);
    fx.runFor(100);
    fx.mark();
    hold(fx, kEsc, 10); // the release leaves the goodbye playing
    EXPECT_EQ(fx.countSinceMark("file write omkeys.cfg failed"), 1);
    EXPECT_EQ(fx.home.read("ombrel.cfg"), "\"\\Skin\\\"\r\n300\r\n0\r\n0\r\n1\r\n#FALSE#\r\n2\r\n2\r\n0\r\n");
    EXPECT_NE(fx.failureEcho.str().find("omkeys.cfg, which does not exist"), std::string::npos)
        << fx.failureEcho.str();
    fx.runFor(1500 - 11);
    EXPECT_FALSE(fx.loop.quitting());
    fx.runFor(1);
    EXPECT_TRUE(fx.loop.quitting());
    EXPECT_EQ(fx.trace.lines.back(), "program end");
}

} // namespace
