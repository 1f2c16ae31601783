// The browser's joystick on a whole cabinet: steps once per poll while a control is held, the saver countdown
// (two buttons together stop it for good), and the exit button of a running game. The change of list drawn by
// the next step, EXIT and the exit button that sends Esc are the scenarios demo-joystick and
// demo-joystick-exit.
#include "CabinetFixture.h"

#include "input/JoystickMap.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

using namespace ombrel;
using test::CabinetFixture;
using test::CabinetSetup;

namespace {

constexpr uint32_t kCentre = 32767;
constexpr uint32_t kFar = 65535;

// joystick.ini with a seven-character label on each of the sixteen rows and the given words (control
// index, word); the other controls are bound to nothing.
std::string joystickIni(const std::vector<std::pair<int, std::string>>& words)
{
    std::string text = "' joystick of the test cabinet\r\n";
    for (int i = 0; i < input::kJoyControls; ++i) {
        text += "Ctl " + std::string(i < 10 ? "0" : "") + std::to_string(i) + ":";
        for (const auto& [index, word] : words)
            if (index == i)
                text += " " + word;
        text += "\r\n";
    }
    return text;
}

void stick(CabinetFixture& fx, uint32_t x, uint32_t y, uint32_t buttons = 0)
{
    fx.joystick.set({ .x = x, .y = y, .buttons = buttons });
}

// Boots with a joystick file (none when ini is empty); a scroll rate of 15 leaves the poll at 75 ms.
void bootWithStick(CabinetFixture& fx, const std::string& ini, CabinetSetup setup = { .scrollRate = 15 })
{
    fx.write(setup);
    if (!ini.empty())
        fx.home.write("joystick.ini", ini);
    fx.boot();
}

const std::string kArcadeStick = joystickIni({ { 0, "SELECT" }, { 3, "DOWN" }, { 4, "DOWN" }, { 5, "INFO" },
    { input::kJoyUp, "UP" }, { input::kJoyDown, "DOWN" }, { input::kJoyRight, "RIGHTPAGE" } });

TEST(MainJoystickTest, AHeldControlStepsOncePerPollUntilItIsLetGo)
{
    struct Case
    {
        const char* name;
        uint32_t x, y, buttons;
        int holdMs, rows, pages; // rows and half strips stepped from index 10
        int scrollRate = 15;
    };
    const Case cases[] = {
        { "stick down", kCentre, kFar, 0, 300, 4, 0 },
        { "stick up", kCentre, 0, 0, 300, -4, 0 },
        { "a button bound to DOWN", kCentre, kCentre, 8, 300, 4, 0 },
        { "a diagonal fires both of its directions", kFar, kFar, 0, 75, 1, 1 },
        { "two buttons bound to DOWN held together", kCentre, kCentre, 8 | 16, 300, 0, 0 },
        { "INFO is out of the stick's reach", kCentre, kCentre, 32, 300, 0, 0 },
        { "scroll rate 16: a poll every 48 ms", kCentre, kFar, 0, 192, 4, 0, 16 },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        bootWithStick(fx, kArcadeStick, { .scrollRate = row.scrollRate });
        fx.main().c.List1.setListIndex(10);
        const int expected = 10 + row.rows + row.pages * fx.cabinet().run.midRow;
        stick(fx, row.x, row.y, row.buttons);
        fx.runFor(row.holdMs);
        EXPECT_EQ(fx.listIndex(), expected);
        stick(fx, kCentre, kCentre);
        fx.runFor(1000);
        EXPECT_EQ(fx.listIndex(), expected);
    }
}

TEST(MainJoystickTest, ThePollWaitsBehindAnotherForm)
{
    CabinetFixture fx;
    bootWithStick(fx, kArcadeStick);
    fx.tap(test::vk::kM); // the mute notice stands for 800 ms
    stick(fx, kCentre, kFar);
    fx.runFor(300);
    EXPECT_EQ(fx.listIndex(), 0);
    fx.runFor(600);
    EXPECT_TRUE(fx.active("Main"));
    EXPECT_GT(fx.listIndex(), 0);
}

TEST(MainJoystickTest, EveryControlRestartsTheCountdownButTwoButtonsStopItForGood)
{
    // A button bound to nothing, a button without joystick.ini, two buttons together: whether the
    // countdown runs again once the stick is let go.
    const std::tuple<bool, uint32_t, bool> cases[]
        = { { true, 512, true }, { false, 1, true }, { true, 1 | 2, false } };
    for (const auto& [iniFile, buttons, saverAfter] : cases) {
        SCOPED_TRACE(buttons);
        CabinetFixture fx;
        bootWithStick(fx, iniFile ? kArcadeStick : std::string(), { .scrollRate = 15, .saverDelay = 5 });
        stick(fx, kCentre, kCentre, buttons);
        fx.runFor(20'000);
        EXPECT_FALSE(fx.showing("ScreenSav"));
        EXPECT_EQ(fx.listIndex(), 0);
        stick(fx, kCentre, kCentre);
        fx.runFor(60'000);
        EXPECT_EQ(fx.showing("ScreenSav"), saverAfter);
    }
}

TEST(MainJoystickTest, TheExitButtonIsKnownAfterALaunchAndAStickThatStopsAnsweringKeepsItsReading)
{
    CabinetFixture fx;
    bootWithStick(fx, joystickIni({ { 2, "Exit" } }));
    EXPECT_EQ(fx.cabinet().joyMap.exitButton, 0);
    fx.main().checkExitbut();
    EXPECT_EQ(fx.cabinet().joyMap.exitButton, 4);
    for (const auto& [buttons, down] :
        { std::pair { 4u, true }, { 4u | 1u, false }, { 0u, false }, { 4u, true } }) {
        SCOPED_TRACE(buttons);
        stick(fx, kCentre, kCentre, buttons);
        EXPECT_EQ(fx.main().exitButtonDown(), down);
    }
    fx.joystick.unplug();
    EXPECT_TRUE(fx.main().exitButtonDown());
}

} // namespace
