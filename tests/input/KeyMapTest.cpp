// KeyMap: reading omkeys.cfg (whole, short, damaged, missing) with the Tab fallback, the writer's
// exact bytes, and which command a key stands for.
#include "TempHome.h"

#include "input/Commands.h"
#include "input/KeyMap.h"
#include "platform/Files.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

using namespace ombrel;
using input::KeyMap;

namespace {

// A usual cabinet, in omkeys.cfg's order: arrows for rows and lists, Page Down and Up, F5, Tab, Enter,
// Esc, 5, M, 1.
KeyMap cabinetKeys()
{
    const int16_t codes[] = { 38, 40, 34, 33, 116, 9, 39, 37, 13, 27, 53, 77, 49 };
    KeyMap keys;
    for (size_t i = 0; i < input::kKeyFileOrder.size(); ++i)
        keys.*input::kKeyFileOrder[i] = codes[i];
    return keys;
}

// The keys in file order, an empty field for a key not given, so a whole map reads at a glance.
std::string inFileOrder(const KeyMap& keys)
{
    std::string out;
    for (input::KeyCode KeyMap::*key : input::kKeyFileOrder)
        out += (keys.*key ? std::to_string(*(keys.*key)) : "") + ",";
    return out;
}

TEST(KeyMapTest, ReadsTheFileOrFallsBackToTabForTheMenu)
{
    struct Case
    {
        const char* name;
        std::string file;
        const char* expected;
        bool complete; // read without a stop
        const char* fileName = "omkeys.cfg"; // as written; it is always looked up as omkeys.cfg
        bool held = false; // the keys were 101 to 113 before, as when the browser is rebuilt
    };
    const Case cases[] = {
        { "line ends and commas mixed, blanks around values, no final line end",
            "  38\r\n40,34\n 33 ,116\r112,39,37,13,27,83,77,73", "38,40,34,33,116,112,39,37,13,27,83,77,73,",
            true },
        { "twelve values: the menu key becomes Tab over the value read",
            "38,40,34,33,116,112,39,37,13,27,83,77\r\n", "38,40,34,33,116,9,39,37,13,27,83,77,,", false },
        { "an empty file", "", ",,,,,9,,,,,,,,", false },
        { "empty fields leave their keys empty", ",,,,,9,,,,27,,,\r\n", ",,,,,9,,,,27,,,,", true },
        { "a word stops the reading", "38,40,up,33,116,112,39,37,13,27,83,77,73\r\n", "38,40,,,,9,,,,,,,,",
            false },
        { "a code beyond 16 bits stops the reading", "38,40,34,33,116,112,39,37,13,70000,83,77,73\r\n",
            "38,40,34,33,116,9,39,37,13,,,,,", false },
        { "a fraction is rounded half to even", "38.5,39.5,34,33,116,112,39,37,13,27,83,77,73\r\n",
            "38,40,34,33,116,112,39,37,13,27,83,77,73,", true },
        { "values past the thirteenth are not read", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,oops\r\n",
            "1,2,3,4,5,6,7,8,9,10,11,12,13,", true },
        { "found whatever the case of its name", "1,2,3,4,5,6,7,8,9,10,11,12,13\r\n",
            "1,2,3,4,5,6,7,8,9,10,11,12,13,", true, "OMKEYS.CFG" },
        { "a missing file gives Tab for the menu", "1,2\r\n", ",,,,,9,,,,,,,,", false, "other.cfg" },
        { "a missing file keeps the other keys", "1,2\r\n",
            "101,102,103,104,105,9,107,108,109,110,111,112,113,", false, "other.cfg", true },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        test::TempHome home;
        home.write(row.fileName, row.file);
        KeyMap keys;
        for (size_t i = 0; row.held && i < input::kKeyFileOrder.size(); ++i)
            keys.*input::kKeyFileOrder[i] = static_cast<int16_t>(101 + i);
        const std::string message = input::getKeys(home.path() + "omkeys.cfg", keys);
        EXPECT_EQ(message.empty(), row.complete) << message;
        EXPECT_EQ(inFileOrder(keys), row.expected);
    }
}

TEST(KeyMapTest, WritesOneLineOfThirteenCodesAndReadsItBack)
{
    KeyMap bare; // a cabinet without a key map saves what it has
    bare.keyConfig = 9;
    const std::pair<KeyMap, const char*> rows[]
        = { { cabinetKeys(), "38,40,34,33,116,9,39,37,13,27,53,77,49\r\n" }, { bare, ",,,,,9,,,,,,,\r\n" } };
    for (const auto& [keys, text] : rows) {
        test::TempHome home;
        platform::DiskFiles disk;
        const std::string path = home.path() + "omkeys.cfg";
        ASSERT_EQ(input::saveKeys(disk, path, keys), "");
        EXPECT_EQ(home.read("omkeys.cfg"), text);
        KeyMap back;
        EXPECT_EQ(input::getKeys(path, back), "");
        EXPECT_EQ(back, keys);
    }
}

// Each key gives its command; when two commands share a key, the one tested first wins.
TEST(KeyMapTest, EachKeyGivesItsCommand)
{
    const KeyMap keys = cabinetKeys();
    using enum input::LogicalCommand;
    const std::pair<int, input::LogicalCommand> cases[] = { { 38, Up }, { 40, Down }, { 34, RightPage },
        { 33, LeftPage }, { 116, Refresh }, { 9, Config }, { 39, NextPath }, { 37, PrevPath }, { 13, Select },
        { 27, Exit }, { 53, ScreenSaver }, { 77, Mute }, { 49, Info } };
    for (const auto& [vk, command] : cases)
        EXPECT_EQ(input::commandForKey(vk, keys), command) << vk;
    EXPECT_EQ(input::commandForKey(65, keys), std::nullopt);
    EXPECT_EQ(input::commandForKey(0, KeyMap {}), std::nullopt)
        << "keys never given match nothing, not even 0";

    const std::tuple<input::KeyCode KeyMap::*, input::KeyCode KeyMap::*, input::LogicalCommand> shared[]
        = { { &KeyMap::keySelect, &KeyMap::keyExit, Exit }, { &KeyMap::keyDown, &KeyMap::keyInfo, Info },
              { &KeyMap::keyDown, &KeyMap::keyUp, Up },
              { &KeyMap::keyNextPage, &KeyMap::keyNextPath, NextPath },
              { &KeyMap::keyRefresh, &KeyMap::keyPrevPage, LeftPage } };
    for (const auto& [first, second, wins] : shared) {
        KeyMap both = cabinetKeys();
        both.*first = both.*second = 200;
        EXPECT_EQ(input::commandForKey(200, both), wins) << input::commandInfo(wins).name;
    }
}

} // namespace
