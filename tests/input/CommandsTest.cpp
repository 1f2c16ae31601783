// Commands: which command a key stands for, two commands on one key, and the table's consistency
// with the key map.
#include "input/Commands.h"

#include "CabinetKeys.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

using namespace ombrel;
using input::KeyMap;
using input::LogicalCommand;

namespace {

using test::cabinetKeys;

TEST(CommandsTest, EachKeyOfTheMapGivesItsCommand)
{
    const KeyMap keys = cabinetKeys();
    using enum LogicalCommand;
    const std::vector<std::pair<int, LogicalCommand>> cases { { 38, Up }, { 40, Down }, { 34, RightPage },
        { 33, LeftPage }, { 116, Refresh }, { 9, Config }, { 39, NextPath }, { 37, PrevPath }, { 13, Select },
        { 27, Exit }, { 53, ScreenSaver }, { 77, Mute }, { 49, Info } };
    for (const auto& [vk, command] : cases) {
        SCOPED_TRACE(vk);
        EXPECT_EQ(input::commandForKey(vk, keys), command);
    }
    EXPECT_EQ(input::commandForKey(65, keys), std::nullopt);
    // Keys that were never given match nothing, not even a code of 0.
    EXPECT_EQ(input::commandForKey(0, KeyMap {}), std::nullopt);
}

TEST(CommandsTest, TwoCommandsOnOneKeyGiveTheOneTestedFirst)
{
    struct Case
    {
        const char* name;
        input::KeyCode KeyMap::*first;
        input::KeyCode KeyMap::*second;
        LogicalCommand wins;
    };
    const std::vector<Case> cases {
        { "exit before select", &KeyMap::keySelect, &KeyMap::keyExit, LogicalCommand::Exit },
        { "info before everything", &KeyMap::keyDown, &KeyMap::keyInfo, LogicalCommand::Info },
        { "up before down", &KeyMap::keyDown, &KeyMap::keyUp, LogicalCommand::Up },
        { "next path before the pages", &KeyMap::keyNextPage, &KeyMap::keyNextPath,
            LogicalCommand::NextPath },
        { "left page before refresh", &KeyMap::keyRefresh, &KeyMap::keyPrevPage, LogicalCommand::LeftPage },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        KeyMap keys = cabinetKeys();
        keys.*row.first = 200;
        keys.*row.second = 200;
        EXPECT_EQ(input::commandForKey(200, keys), row.wins);
    }
}

TEST(CommandsTest, TableHoldsEveryCommandAndEveryKeyOnce)
{
    std::set<LogicalCommand> commands;
    std::set<size_t> fields; // positions in the file
    std::set<std::string_view> names;
    for (const input::CommandInfo& info : input::kCommands) {
        commands.insert(info.command);
        names.insert(info.name);
        for (size_t i = 0; i < input::kKeyFileOrder.size(); ++i)
            if (input::kKeyFileOrder[i] == info.key)
                fields.insert(i);
        EXPECT_EQ(&input::commandInfo(info.command), &info);
    }
    EXPECT_EQ(commands.size(), 13u);
    EXPECT_EQ(names.size(), 13u);
    EXPECT_EQ(fields.size(), 13u) << "every field of the file belongs to one command";

    // Only the menu has a key on a cabinet without a key map.
    for (const input::CommandInfo& info : input::kCommands) {
        SCOPED_TRACE(std::string(info.name));
        EXPECT_EQ(info.defaultKey.has_value(), info.command == LogicalCommand::Config);
    }
}

} // namespace
