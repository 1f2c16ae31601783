// JoystickMap: reading joystick.ini (whole, short, damaged, missing), the words' commands, the exit
// button, and the controls that one reading of the stick fires.
#include "TempHome.h"

#include "input/JoystickMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

using namespace ombrel;
using input::JoystickMap;
using input::LogicalCommand;

namespace {

// The sixteen bindings joined by '|', trailing empty ones left off, so a row reads at a glance.
std::string bound(const JoystickMap& map)
{
    std::string words;
    for (const std::string& word : map.joyKeys)
        words += word + "|";
    return words.erase(words.find_last_not_of('|') + 1);
}

std::string repeated(const std::string& text, int times)
{
    return times == 0 ? "" : text + repeated(text, times - 1);
}

// Every label is seven characters, "Btn  1:" or "Up    :", as a cabinet owner lines them up.
const std::string kSixteen
    = "Btn  1: SELECT\r\nBtn  2: Exit\r\nBtn  3: refresh\r\nBtn  4:   MUTE  \r\n"
      "Btn  5: CONFIG\r\nBtn  6: SCREENSAVER\r\nBtn  7: LEFTPAGE\r\nBtn  8: RIGHTPAGE\r\n"
      "Btn  9:\r\nBtn 10:\r\nBtn 11:\r\nBtn 12:\r\n"
      "Up    : UP\r\nDown  : DOWN\r\nLeft  : PREVPATH\r\nRight : NEXTPATH\r\n";
const char* kSixteenWords
    = "SELECT|Exit|refresh|MUTE|CONFIG|SCREENSAVER|LEFTPAGE|RIGHTPAGE|||||UP|DOWN|PREVPATH|NEXTPATH";

TEST(JoystickMapTest, ReadsSixteenBindingsOrStopsWhereTheFileGoesWrong)
{
    struct Case
    {
        const char* name;
        std::string file;
        std::string expected;
        bool complete; // all sixteen controls were read
        const char* fileName = "joystick.ini"; // as written; it is always looked up as joystick.ini
        const char* held = ""; // what every binding held before the reading
    };
    const Case cases[] = {
        { "sixteen rows, labels dropped, words trimmed, case kept", kSixteen, kSixteenWords, true },
        { "the file is found whatever the case of its name", kSixteen, kSixteenWords, true, "Joystick.INI" },
        { "comments and blank rows bind nothing and take no place",
            "' Ombrel joystick\r\n\r\n'Btn  1: MUTE\r\nBtn  1: SELECT\r\n   \r\n" + kSixteen.substr(16),
            kSixteenWords, true },
        { "LF line ends, and rows past the sixteenth are not read",
            "Btn  1: UP\n" + repeated("Other: X\n", 15) + "Btn 17: DOWN\nshort\n", "UP" + repeated("|X", 15),
            true },
        { "a missing row ends the reading", "Btn  1: UP\r\nBtn  2: DOWN\r\n", "UP|DOWN", false },
        { "an empty file", "", "", false },
        { "a row shorter than its label stops the reading", "Btn  1: UP\r\nBtn  2\r\nBtn  3: DOWN\r\n", "UP",
            false },
        { "a row of the label alone binds nothing but takes its place", "Btn  1:\r\nBtn  2: DOWN\r\n",
            "|DOWN", false },
        { "a comma ends a row: the rest of it is the next control's row",
            "Btn  1: UP, Btn  2: DOWN\r\n' a comment, Btn  3: SELECT\r\n", "UP|DOWN|SELECT", false },
        { "blanks before a row are skipped before the label is counted",
            "   Btn  1: SELECT\r\n\tBtn  2: DOWN\r\n", "SELECT|DOWN", false },
        { "a label in UTF-8 counts characters, not bytes", "Bouton\xC3\xA9 SELECT\r\n", "SELECT", false },
        { "a label in Windows-1252 counts bytes", "Bouton\xE9 SELECT\r\n", "SELECT", false },
        { "bindings not reached keep what they held", "Btn  1: SELECT\r\nBtn  2:\r\n",
            "SELECT|" + repeated("|MUTE", 14), false, "joystick.ini", "MUTE" },
        { "without the file every binding keeps what it held", kSixteen, "MUTE" + repeated("|MUTE", 15),
            false, "other.ini", "MUTE" },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        test::TempHome home;
        home.write(row.fileName, row.file);
        JoystickMap map;
        map.joyKeys.fill(row.held);
        const std::string message = input::GetJoyKeys(home.path() + "joystick.ini", map);
        EXPECT_EQ(message.empty(), row.complete) << message;
        EXPECT_EQ(bound(map), row.expected);
    }
}

TEST(JoystickMapTest, WordsGiveTheirCommandsInAnyCaseButInfoIsOutOfReach)
{
    using enum LogicalCommand;
    const std::vector<std::pair<std::string, std::optional<LogicalCommand>>> cases {
        // clang-format off
        { "SELECT", Select }, { "select", Select }, { "Exit", Exit }, { "UP", Up }, { "down", Down },
        { "LeftPage", LeftPage }, { "RIGHTPAGE", RightPage }, { "PREVPATH", PrevPath }, { "NextPath", NextPath },
        { "REFRESH", Refresh }, { "MUTE", Mute }, { "SCREENSAVER", ScreenSaver }, { "CONFIG", Config },
        { "INFO", std::nullopt }, { "", std::nullopt }, { "JUMP", std::nullopt }, { "SELECT!", std::nullopt },
        { "UP DOWN", std::nullopt },
        // clang-format on
    };
    for (const auto& [word, command] : cases)
        EXPECT_EQ(input::joyCommand(word), command) << word;
}

TEST(JoystickMapTest, TheExitButtonIsTheFirstButtonSpeltExit)
{
    // The words of the first controls (the 13th is the stick's Up), the mask before, the mask after.
    const std::tuple<std::vector<std::string>, int16_t, int16_t> cases[]
        = { { { "Exit" }, 0, 1 }, { { "", "", "Exit", "", "", "Exit" }, 0, 4 }, { { "EXIT", "exit" }, 0, 0 },
              { { "", "", "", "", "", "", "", "", "", "", "", "", "Exit" }, 0, 0 }, { { "SELECT" }, 8, 8 } };
    for (const auto& [words, before, expected] : cases) {
        JoystickMap map;
        map.exitButton = before;
        std::copy(words.begin(), words.end(), map.joyKeys.begin());
        input::checkExitbut(map);
        EXPECT_EQ(map.exitButton, expected) << words.size();
    }
}

// The stick fires beyond its dead zone, in its order; one of the twelve buttons fires when held alone.
TEST(JoystickMapTest, TheControlsOneReadingFires)
{
    using input::kJoyDown, input::kJoyLeft, input::kJoyRight, input::kJoyUp;
    const std::tuple<uint32_t, uint32_t, std::vector<int>> sticks[] = {
        // clang-format off
        { 32767, 32767, {} }, { 20000, 20000, {} }, { 40000, 40000, {} },
        { 32767, 19999, { kJoyUp } }, { 32767, 40001, { kJoyDown } },
        { 19999, 32767, { kJoyLeft } }, { 40001, 32767, { kJoyRight } },
        { 0, 0, { kJoyUp, kJoyLeft } }, { 65535, 65535, { kJoyDown, kJoyRight } },
        { 65535, 0, { kJoyUp, kJoyRight } }, { 0, 65535, { kJoyDown, kJoyLeft } },
        // clang-format on
    };
    for (const auto& [x, y, expected] : sticks) // the buttons play no part in the directions
        EXPECT_EQ(input::stickControls({ .x = x, .y = y, .buttons = 1 }), expected) << x << "," << y;
    const std::pair<uint32_t, std::optional<int>> buttons[] = { { 0, std::nullopt }, { 1, 0 }, { 8, 3 },
        { 2048, 11 }, { 3, std::nullopt }, { 4096, std::nullopt }, { 0xFFFFFFFFu, std::nullopt } };
    for (const auto& [held, control] : buttons)
        EXPECT_EQ(input::buttonControl(held), control) << held;
}

} // namespace
