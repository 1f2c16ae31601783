// Commands: which command a key stands for, and which wins when two commands share one key.
#include "input/Commands.h"

#include "CabinetKeys.h"

#include <gtest/gtest.h>

using namespace ombrel;
using input::KeyMap;
using input::LogicalCommand;

namespace {

TEST(CommandsTest, EachKeyOfTheMapGivesItsCommand)
{
    const KeyMap keys = test::cabinetKeys();
    using enum LogicalCommand;
    const std::pair<int, LogicalCommand> cases[] = { { 38, Up }, { 40, Down }, { 34, RightPage }, { 33, LeftPage },
        { 116, Refresh }, { 9, Config }, { 39, NextPath }, { 37, PrevPath }, { 13, Select }, { 27, Exit },
        { 53, ScreenSaver }, { 77, Mute }, { 49, Info } };
    for (const auto& [vk, command] : cases)
        EXPECT_EQ(input::commandForKey(vk, keys), command) << vk;
    EXPECT_EQ(input::commandForKey(65, keys), std::nullopt);
    // Keys that were never given match nothing, not even a code of 0.
    EXPECT_EQ(input::commandForKey(0, KeyMap {}), std::nullopt);
}

TEST(CommandsTest, TwoCommandsOnOneKeyGiveTheOneTestedFirst)
{
    struct Case {
        input::KeyCode KeyMap::*first;
        input::KeyCode KeyMap::*second;
        LogicalCommand wins;
    };
    const Case cases[] = {
        { &KeyMap::keySelect, &KeyMap::keyExit, LogicalCommand::Exit },
        { &KeyMap::keyDown, &KeyMap::keyInfo, LogicalCommand::Info }, // info before everything
        { &KeyMap::keyDown, &KeyMap::keyUp, LogicalCommand::Up },
        { &KeyMap::keyNextPage, &KeyMap::keyNextPath, LogicalCommand::NextPath },
        { &KeyMap::keyRefresh, &KeyMap::keyPrevPage, LogicalCommand::LeftPage },
    };
    for (const Case& row : cases) {
        KeyMap keys = test::cabinetKeys();
        keys.*row.first = keys.*row.second = 200;
        EXPECT_EQ(input::commandForKey(200, keys), row.wins) << input::commandInfo(row.wins).name;
    }
}

} // namespace
