// The browser's keyboard on a whole cabinet: steps of held keys at the scroll rate, the release's
// redraw and click, the shift views, the saver countdown, the sound switch, the mouse spinner, and the
// exit command to the program's end.
#include "CabinetFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

using namespace ombrel;
using namespace ombrel::test::vk;
using test::CabinetFixture;
using test::CabinetSetup;

namespace {

const std::string kPop = "media mpFX open omthemes/Skin/pop.mp3";
const std::string kPlay = "media mpFX play";

TEST(MainKeysTest, HeldKeyStepsAtTheScrollRate)
{
    struct Case
    {
        const char* name;
        int scrollRate;
        int key;
        int holdMs;
        int rowSteps; // for the row keys, from row 50
        int pathSteps; // for the path keys, from list 1
        int joystickMs;
    };
    // The path keys and the joystick go three times slower than the rows; at 15 or below the rate
    // is not taken and everything steps every 75 ms.
    const std::vector<Case> cases {
        { "rows at 15", 15, kDown, 170, 2, 0, 75 },
        { "rows at 16", 16, kDown, 170, 10, 0, 48 },
        { "rows up at 16", 16, kUp, 170, -10, 0, 48 },
        { "lists at 15", 15, kRight, 170, 0, 2, 75 },
        { "lists at 16", 16, kRight, 170, 0, 3, 48 },
        { "a rate too large to triple keeps the lists at 75", 20000, kRight, 170, 0, 2, 75 },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        CabinetSetup setup;
        setup.scrollRate = row.scrollRate;
        setup.listSizes = { 100, 3, 3, 3, 3 };
        fx.boot(setup);
        ASSERT_EQ(fx.curPath(), 1);
        fx.main().c.List1.setListIndex(50);
        fx.press(row.key);
        fx.runFor(row.holdMs);
        fx.release(row.key);
        if (row.pathSteps == 0) {
            EXPECT_EQ(fx.listIndex(), 50 + row.rowSteps);
        }
        EXPECT_EQ(fx.curPath(), 1 + row.pathSteps);
        EXPECT_EQ(fx.main().timjoy.interval(), row.joystickMs);
        // Nothing moves once the key is up.
        const int index = fx.listIndex();
        fx.runFor(1000);
        EXPECT_EQ(fx.listIndex(), index);
        EXPECT_EQ(fx.curPath(), 1 + row.pathSteps);
    }
}

TEST(MainKeysTest, EachStepClicksAndTheReleaseClicksOnceMoreButRepeatsDoNothing)
{
    CabinetFixture fx;
    fx.boot(CabinetSetup {});

    // A tap shorter than the interval moves nothing, but the release still redraws and clicks.
    fx.mark();
    fx.press(kDown);
    fx.runFor(50);
    EXPECT_EQ(fx.countSinceMark(kPop), 0);
    fx.release(kDown);
    EXPECT_EQ(fx.listIndex(), 0);
    EXPECT_EQ(fx.countSinceMark(kPop), 1);
    EXPECT_EQ(fx.countSinceMark(kPlay), 1);

    // The keyboard's own repeat of a held key adds no steps and no clicks.
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
    EXPECT_EQ(fx.countSinceMark(kPlay), 3);
}

TEST(MainKeysTest, ReleasingEitherOfTwoHeldKeysStopsBoth)
{
    CabinetFixture fx;
    CabinetSetup setup;
    setup.scrollRate = 15; // rows and lists both every 75 ms
    fx.boot(setup);
    fx.main().c.List1.setListIndex(50);
    fx.press(kUp);
    fx.press(kRight);
    fx.runFor(80);
    EXPECT_EQ(fx.curPath(), 2) << "both keys step while held";
    fx.release(kUp); // the list key is still down
    const int index = fx.listIndex();
    fx.runFor(500);
    EXPECT_EQ(fx.curPath(), 2);
    EXPECT_EQ(fx.listIndex(), index);
}

TEST(MainKeysTest, MovementKeyWithShiftCtrlOrAltShowsItsPictureFullScreen)
{
    struct Case
    {
        int key;
        const char* panel;
        int shift;
    };
    const std::vector<Case> cases {
        { kUp, "xMarquee", runtime::kShiftMask },
        { kDown, "xScreen", runtime::kCtrlMask },
        { kPageDown, "xFlyer", runtime::kAltMask },
        { kPageUp, "xCabinet", runtime::kShiftMask | runtime::kCtrlMask },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.panel);
        CabinetFixture fx;
        fx.boot(CabinetSetup {});
        fx.main().c.List1.setListIndex(5);
        const std::string picture
            = fx.home.write(std::string("art/") + row.panel + ".png", test::pngHeader(4, 3));
        auto* panel = dynamic_cast<runtime::PictureControl*>(fx.main().find(row.panel));
        ASSERT_TRUE(panel);
        ASSERT_TRUE(panel->setFileName(picture));

        fx.press(row.key, row.shift);
        fx.runFor(300);
        fx.release(row.key, row.shift);
        EXPECT_TRUE(fx.active("ScreenSav"));
        EXPECT_FALSE(fx.showing("Main"));
        EXPECT_FALSE(fx.cabinet().run.saverAuto);
        EXPECT_EQ(fx.cabinet().run.curPic, picture);
        EXPECT_EQ(fx.listIndex(), 5);

        fx.tap(kEsc);
        EXPECT_FALSE(fx.showing("ScreenSav"));
        EXPECT_TRUE(fx.active("Main"));
        EXPECT_EQ(fx.listIndex(), 5);
    }
}

// A key without a command restarts the countdown all the same, a held key stops it until its release,
// and a delay of -1 never opens the saver, though its key still does.
TEST(MainKeysTest, SaverOpensTheDelayAfterTheLastKeyUp)
{
    struct Case
    {
        const char* name;
        double delay;
        int holdMs;
    };
    const Case cases[] = { { "a tap", 5, 0 }, { "a held key", 5, 20000 }, { "saver off", -1, 0 } };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        CabinetSetup setup;
        setup.saverDelay = row.delay;
        fx.boot(setup);
        fx.press(kA);
        fx.runFor(row.holdMs);
        EXPECT_FALSE(fx.showing("ScreenSav"));
        fx.release(kA);
        const int64_t opensAfterMs = row.delay > 0 ? static_cast<int64_t>(row.delay * 1000) : 600'000;
        fx.runFor(opensAfterMs - 1);
        EXPECT_FALSE(fx.showing("ScreenSav"));
        fx.runFor(1);
        EXPECT_EQ(fx.active("ScreenSav"), row.delay > 0);
        if (row.delay < 0)
            fx.tap(kFive);
        EXPECT_TRUE(fx.active("ScreenSav"));
        EXPECT_FALSE(fx.showing("Main"));
        fx.tap(kEsc);
        EXPECT_TRUE(fx.active("Main"));
        EXPECT_EQ(fx.cabinet().run.saverCount, row.delay);
    }
}

TEST(MainKeysTest, MuteStopsThePlayingSoundAndSilencesTheClicks)
{
    CabinetFixture fx;
    fx.boot(CabinetSetup {});
    fx.tap(kDown); // the click is playing
    fx.mark();
    fx.press(kM);
    EXPECT_TRUE(fx.cabinet().saved.muted);
    EXPECT_EQ(fx.countSinceMark("media mpFX stop"), 1);
    EXPECT_TRUE(fx.active("frmMute"));
    fx.release(kM);
    fx.runFor(799);
    EXPECT_TRUE(fx.showing("frmMute"));
    fx.runFor(1);
    EXPECT_FALSE(fx.showing("frmMute"));
    EXPECT_TRUE(fx.active("Main"));

    fx.mark();
    fx.press(kDown);
    fx.runFor(170);
    fx.release(kDown);
    EXPECT_EQ(fx.listIndex(), 2);
    EXPECT_EQ(fx.countSinceMark(kPop), 0);
}

TEST(MainKeysTest, CabinetWithoutKeyMapReachesTheMenuWithTabAndStaysQuiet)
{
    CabinetFixture fx;
    CabinetSetup setup;
    setup.keyFile = false;
    fx.boot(setup);
    fx.mark();
    fx.press(kTab);
    EXPECT_TRUE(fx.active("frmMenu"));
    fx.release(kTab);
    fx.tap(kEsc);
    EXPECT_FALSE(fx.showing("frmMenu"));
    EXPECT_TRUE(fx.active("Main"));
    fx.tap(kDown);
    EXPECT_EQ(fx.countSinceMark(kPop), 0);
}

TEST(MainKeysTest, MouseSpinnerStepsOnceATickAndJumpsBeforeTheEdges)
{
    CabinetFixture fx;
    fx.boot(CabinetSetup {});
    startup::MainForm& main = fx.main();
    main.c.List1.setListIndex(50);
    fx.cursor.moveTo(100, 40);
    main.lastCursor = { 100, 40 };
    main.timscroller2.setEnabled(true);

    struct Tick
    {
        int moveTo; // where the player moves the mouse before the tick, -1 for not at all
        int index;
        int cursorX; // where the pointer is after the tick
    };
    // The browser is 640 pixels wide: at 610 the pointer jumps to 31, below 31 to 609, and the jump
    // reads as one step back on the next tick.
    const std::vector<Tick> ticks {
        { 110, 51, 110 },
        { -1, 51, 110 },
        { 100, 50, 100 },
        { 615, 51, 31 },
        { -1, 50, 31 },
        { 20, 49, 609 },
        { -1, 50, 609 },
    };
    for (size_t i = 0; i < ticks.size(); ++i) {
        SCOPED_TRACE(i);
        if (ticks[i].moveTo >= 0)
            fx.cursor.moveTo(ticks[i].moveTo, 40);
        fx.runFor(150);
        EXPECT_EQ(fx.listIndex(), ticks[i].index);
        EXPECT_EQ(fx.cursor.position().x, ticks[i].cursorX);
    }
}

TEST(MainKeysTest, ExitSavesBothFilesAndEndsWhenTheGoodbyeHasPlayed)
{
    struct Case
    {
        const char* name;
        bool muted;
        bool keyMapWritable;
        int64_t endsAfterMs;
    };
    // Without sound the end comes at the first look, a second after the key; otherwise the look is
    // repeated every millisecond until "end.mp3" is over.
    const std::vector<Case> cases {
        { "with sound", false, true, 1500 },
        { "muted", true, true, 1000 },
        { "key map cannot be written", false, false, 1500 },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        CabinetSetup setup;
        setup.muted = row.muted;
        setup.scrollRate = 15;
        fx.write(setup);
        fx.boot();
        if (!row.keyMapWritable) {
            std::filesystem::remove(fx.home.root() / "omkeys.cfg");
            fx.home.write("omkeys.cfg/blocked", ""); // a folder in the file's place
        }
        fx.press(kRight);
        fx.runFor(80);
        fx.release(kRight);
        fx.main().c.List1.setListIndex(2);
        fx.runFor(100);

        fx.mark();
        const int64_t pressed = fx.loop.now();
        fx.press(kEsc);
        fx.runFor(10);
        fx.release(kEsc); // the release leaves the goodbye playing

        std::vector<std::string> expected { "file write omkeys.cfg"
                + std::string(row.keyMapWritable ? "" : " failed"),
            "file write ombrel.cfg" };
        if (!row.muted) {
            expected.push_back("media mpFX open omthemes/Skin/end.mp3");
            expected.push_back(kPlay);
        }
        const auto lines = fx.sinceMark();
        std::vector<std::string> effects;
        std::copy_if(lines.begin(), lines.end(), std::back_inserter(effects), [](const std::string& line) {
            return line.starts_with("file ") || line.starts_with("media mpFX");
        });
        EXPECT_EQ(effects, expected);
        if (row.keyMapWritable) {
            EXPECT_EQ(fx.home.read("omkeys.cfg"), test::kCabinetKeys);
        }
        EXPECT_EQ(fx.home.read("ombrel.cfg"),
            std::string("\"\\Skin\\\"\r\n300\r\n0\r\n0\r\n1\r\n") + (row.muted ? "#TRUE#" : "#FALSE#")
                + "\r\n2\r\n2\r\n0\r\n");

        fx.runFor(row.endsAfterMs - 11);
        EXPECT_FALSE(fx.loop.quitting());
        fx.runFor(5);
        EXPECT_TRUE(fx.loop.quitting());
        EXPECT_EQ(fx.loop.now(), pressed + row.endsAfterMs);
        EXPECT_EQ(fx.trace.lines.back(), "program end");
    }
}

} // namespace
