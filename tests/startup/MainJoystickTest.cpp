// The browser's joystick on a whole cabinet: steps once per poll while a control is held, the change
// of list that waits for the next step to be drawn, SELECT on every poll, the other forms, the saver
// countdown (two buttons together stop it for good), EXIT, and the exit button of a running game.
#include "CabinetFixture.h"

#include "input/JoystickMap.h"
#include "runtime/controls/Label.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

using namespace ombrel;
using test::CabinetFixture;
using test::CabinetSetup;

namespace {

constexpr uint32_t kCentre = 32767;
constexpr uint32_t kFar = 65535;
const std::string kPop = "media mpFX open omthemes/Skin/pop.mp3";

// joystick.ini with a seven-character label on each of the sixteen rows and the given words (control
// index, word); the other controls are bound to nothing.
std::string joystickIni(const std::vector<std::pair<int, std::string>>& words)
{
    std::string text = "' joystick of the test cabinet\r\n";
    for (int i = 0; i < input::kJoyControls; ++i) {
        std::string label = "Ctl " + std::string(i < 10 ? "0" : "") + std::to_string(i) + ":";
        text += label;
        for (const auto& [index, word] : words)
            if (index == i)
                text += " " + word;
        text += "\r\n";
    }
    return text;
}

void stick(CabinetFixture& fx, uint32_t x, uint32_t y, uint32_t buttons = 0)
{
    platform::JoyInfo joy;
    joy.x = x;
    joy.y = y;
    joy.buttons = buttons;
    fx.joystick.set(joy);
}

void letGo(CabinetFixture& fx)
{
    stick(fx, kCentre, kCentre);
}

// A scroll rate of 15 ms or less leaves the poll at its 75 ms.
CabinetSetup pollEvery75()
{
    CabinetSetup setup;
    setup.scrollRate = 15;
    return setup;
}

// Boots the cabinet of CabinetSetup with a joystick file (none when ini is empty).
void bootWithStick(CabinetFixture& fx, const std::string& ini, CabinetSetup setup = pollEvery75())
{
    fx.write(setup);
    if (!ini.empty())
        fx.home.write("joystick.ini", ini);
    fx.boot();
}

const std::string kArcadeStick = joystickIni({ { 0, "SELECT" }, { 1, "NextPath" }, { 2, "prevpath" },
    { 3, "DOWN" }, { 4, "DOWN" }, { 5, "INFO" }, { input::kJoyUp, "UP" }, { input::kJoyDown, "DOWN" },
    { input::kJoyLeft, "LEFTPAGE" }, { input::kJoyRight, "RIGHTPAGE" } });

TEST(MainJoystickTest, AHeldControlStepsOncePerPollUntilItIsLetGo)
{
    struct Case
    {
        const char* name;
        uint32_t x, y, buttons;
        int holdMs;
        int rows; // steps of one row expected from index 10
        int pages; // steps of half a strip
        int scrollRate = 15;
    };
    const std::vector<Case> cases {
        { "stick down", kCentre, kFar, 0, 300, 4, 0 },
        { "stick up", kCentre, 0, 0, 300, -4, 0 },
        { "a button bound to DOWN", kCentre, kCentre, 8, 300, 4, 0 },
        { "stick right pages", kFar, kCentre, 0, 150, 0, 2 },
        { "a diagonal fires both of its directions", kFar, kFar, 0, 75, 1, 1 },
        { "the edges of the dead zone", 40000, 20000, 0, 300, 0, 0 },
        { "two buttons bound to DOWN held together", kCentre, kCentre, 8 | 16, 300, 0, 0 },
        { "button 13", kCentre, kCentre, 4096, 300, 0, 0 },
        { "INFO is out of the stick's reach", kCentre, kCentre, 32, 300, 0, 0 },
        { "scroll rate 16: a poll every 48 ms", kCentre, kFar, 0, 192, 4, 0, 16 },
        { "scroll rate 75: a poll every 225 ms", kCentre, kFar, 0, 900, 4, 0, 75 },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        CabinetSetup setup;
        setup.scrollRate = row.scrollRate;
        bootWithStick(fx, kArcadeStick, setup);
        fx.main().c.List1.setListIndex(10);
        const int page = fx.cabinet().run.midRow;
        ASSERT_GT(page, 0);

        stick(fx, row.x, row.y, row.buttons);
        fx.runFor(row.holdMs);
        EXPECT_EQ(fx.listIndex(), 10 + row.rows + row.pages * page);
        letGo(fx);
        fx.runFor(1000);
        EXPECT_EQ(fx.listIndex(), 10 + row.rows + row.pages * page);
        EXPECT_TRUE(fx.active("Main"));
    }
}

TEST(MainJoystickTest, AChangeOfListWaitsForTheNextStepToBeDrawn)
{
    CabinetFixture fx;
    bootWithStick(fx, kArcadeStick);
    auto& main = fx.main();
    runtime::Label* middle = main.c.ll.get(fx.cabinet().run.midRow);
    ASSERT_NE(middle, nullptr);
    const std::string before = middle->caption();
    ASSERT_FALSE(before.empty());

    fx.mark();
    stick(fx, kCentre, kCentre, 2); // NextPath
    fx.runFor(75);
    letGo(fx);
    EXPECT_EQ(fx.curPath(), 2);
    EXPECT_EQ(main.c.List1.listCount(), 3);
    EXPECT_EQ(middle->caption(), before);
    EXPECT_EQ(fx.countSinceMark(kPop), 0);

    stick(fx, kCentre, kFar); // one row down draws the new list, with its click
    fx.runFor(75);
    letGo(fx);
    EXPECT_EQ(fx.listIndex(), 1);
    EXPECT_NE(middle->caption(), before);
    EXPECT_EQ(fx.countSinceMark(kPop), 1);

    stick(fx, kCentre, kCentre, 4); // prevpath
    fx.runFor(75);
    letGo(fx);
    EXPECT_EQ(fx.curPath(), 1);
}

TEST(MainJoystickTest, AHeldSelectStartsTheGameOnEveryPoll)
{
    CabinetFixture fx;
    CabinetSetup setup = pollEvery75();
    setup.muted = true; // no start sound: the game starts inside the poll
    bootWithStick(fx, kArcadeStick, setup);
    fx.mark();
    stick(fx, kCentre, kCentre, 1);
    fx.runFor(225);
    letGo(fx);
    fx.runFor(300);
    const auto lines = fx.sinceMark();
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                  [](const std::string& line) { return line.starts_with("launch "); }),
        3);
}

TEST(MainJoystickTest, RefreshScansForTheGamesAgain)
{
    CabinetFixture fx;
    bootWithStick(fx, joystickIni({ { 6, "Refresh" } }));
    fx.main().c.List1.setListIndex(40);
    fx.home.write("roms/1/g1_003.zip", "");
    fx.home.write("roms/1/g1_007.zip", "");
    fx.home.write("roms/3/g3_002.zip", "");
    stick(fx, kCentre, kCentre, 64);
    fx.runFor(75);
    letGo(fx);
    EXPECT_EQ(fx.curPath(), 1);
    EXPECT_EQ(fx.main().c.List1.listCount(), 2);
    EXPECT_EQ(fx.home.read("l 3.lst"), "\"g3_002\",\"Game 3-2\"\r\n");
}

TEST(MainJoystickTest, OtherFormsTakeOverAndThePollWaitsBehindThem)
{
    struct Case
    {
        const char* word;
        const char* form;
    };
    for (const Case& row :
        { Case { "CONFIG", "frmMenu" }, Case { "ScreenSaver", "ScreenSav" }, Case { "mute", "frmMute" } }) {
        SCOPED_TRACE(row.word);
        CabinetFixture fx;
        bootWithStick(fx, joystickIni({ { 0, row.word }, { input::kJoyDown, "DOWN" } }));
        const bool mutedBefore = fx.cabinet().saved.muted;
        stick(fx, kCentre, kCentre, 1);
        fx.runFor(75);
        EXPECT_TRUE(fx.active(row.form));
        EXPECT_EQ(fx.cabinet().saved.muted, std::string(row.form) == "frmMute" ? !mutedBefore : mutedBefore);
        // Main is no longer the active form: its poll is off, and the stick moves nothing behind the form.
        stick(fx, kCentre, kFar);
        fx.runFor(300);
        EXPECT_EQ(fx.listIndex(), 0);
        letGo(fx);
        if (fx.showing(row.form))
            fx.tap(test::vk::kEsc);
        fx.runFor(1000);
        EXPECT_TRUE(fx.active("Main"));
        stick(fx, kCentre, kFar);
        fx.runFor(75);
        EXPECT_EQ(fx.listIndex(), 1);
    }
}

TEST(MainJoystickTest, EveryControlRestartsTheCountdownButTwoButtonsStopItForGood)
{
    struct Case
    {
        const char* name;
        bool iniFile;
        uint32_t buttons;
        bool saverAfterLettingGo; // the countdown runs again once the stick is let go
    };
    const std::vector<Case> cases {
        { "a button bound to nothing", true, 512, true },
        { "a button of a cabinet without joystick.ini", false, 1, true },
        { "two buttons together", true, 1 | 2, false },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        CabinetSetup setup = pollEvery75();
        setup.saverDelay = 5;
        bootWithStick(fx, row.iniFile ? kArcadeStick : std::string(), setup);
        stick(fx, kCentre, kCentre, row.buttons);
        fx.runFor(20'000);
        EXPECT_FALSE(fx.showing("ScreenSav"));
        EXPECT_EQ(fx.listIndex(), 0);
        letGo(fx);
        fx.runFor(60'000);
        EXPECT_EQ(fx.showing("ScreenSav"), row.saverAfterLettingGo);
    }
}

// EXIT from the stick takes the key's road (MainKeysTest) to the program's end.
TEST(MainJoystickTest, ExitEndsTheProgram)
{
    CabinetFixture fx;
    bootWithStick(fx, joystickIni({ { 7, "exit" } }));
    stick(fx, kCentre, kCentre, 128);
    fx.runFor(75);
    letGo(fx);
    fx.runFor(2000);
    EXPECT_EQ(std::count(fx.trace.lines.begin(), fx.trace.lines.end(), "file write ombrel.cfg"), 1);
    EXPECT_EQ(fx.trace.lines.back(), "program end");
}

TEST(MainJoystickTest, TheExitButtonCountsOnlyWhenHeldAloneAndSpeltExit)
{
    struct Case
    {
        const char* name;
        std::string ini;
        int16_t exitButton;
        std::vector<std::pair<uint32_t, bool>> readings; // buttons, exit button down
    };
    const std::vector<Case> cases {
        { "button 3", joystickIni({ { 2, "Exit" } }), 4,
            { { 4, true }, { 4 | 1, false }, { 0, false }, { 1, false } } },
        { "spelt otherwise", joystickIni({ { 2, "EXIT" } }), 0, { { 4, false }, { 0, false } } },
        { "on a stick direction", joystickIni({ { input::kJoyUp, "Exit" } }), 0, { { 0, false } } },
        { "no joystick.ini", "", 0, { { 4, false } } },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        bootWithStick(fx, row.ini);
        EXPECT_EQ(fx.cabinet().joyMap.exitButton, 0) << "known only after a launch";
        fx.main().checkExitbut();
        EXPECT_EQ(fx.cabinet().joyMap.exitButton, row.exitButton);
        for (const auto& [buttons, down] : row.readings) {
            SCOPED_TRACE(buttons);
            stick(fx, kCentre, kCentre, buttons);
            EXPECT_EQ(fx.main().exitButtonDown(), down);
        }
        // A stick that stops answering leaves its last reading.
        stick(fx, kCentre, kCentre, 4);
        EXPECT_EQ(fx.main().exitButtonDown(), row.exitButton == 4);
        fx.joystick.unplug();
        EXPECT_EQ(fx.main().exitButtonDown(), row.exitButton == 4);
    }
}

} // namespace
