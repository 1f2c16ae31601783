// Commands: the thirteen commands of the browser, their keys, and which command a key stands for.
#pragma once

#include "input/KeyMap.h"

#include <array>
#include <optional>
#include <string_view>

namespace ombrel::input {

enum class LogicalCommand {
    Info,
    Config,
    Mute,
    Exit,
    ScreenSaver,
    Up,
    Down,
    NextPath,
    PrevPath,
    RightPage,
    LeftPage,
    Refresh,
    Select,
};

struct CommandInfo
{
    LogicalCommand command;
    std::string_view name; // also the command's word in joystick.ini (which cannot reach INFO)
    KeyCode KeyMap::*key; // where the key map keeps its key
    KeyCode defaultKey; // the key it has on a cabinet without a key map
    bool repeatable; // held down, it steps again and again at the scroll rate
};

// In the order in which the browser compares a key with them: the first match wins, so when two
// commands share a key, the later one is never reached from the keyboard.
inline constexpr std::array<CommandInfo, 13> kCommands { {
    { LogicalCommand::Info, "INFO", &KeyMap::keyInfo, std::nullopt, false },
    { LogicalCommand::Config, "CONFIG", &KeyMap::keyConfig, kTabKey, false },
    { LogicalCommand::Mute, "MUTE", &KeyMap::keyMute, std::nullopt, false },
    { LogicalCommand::Exit, "EXIT", &KeyMap::keyExit, std::nullopt, false },
    { LogicalCommand::ScreenSaver, "SCREENSAVER", &KeyMap::keySaver, std::nullopt, false },
    { LogicalCommand::Up, "UP", &KeyMap::keyUp, std::nullopt, true },
    { LogicalCommand::Down, "DOWN", &KeyMap::keyDown, std::nullopt, true },
    { LogicalCommand::NextPath, "NEXTPATH", &KeyMap::keyNextPath, std::nullopt, true },
    { LogicalCommand::PrevPath, "PREVPATH", &KeyMap::keyPrevPath, std::nullopt, true },
    { LogicalCommand::RightPage, "RIGHTPAGE", &KeyMap::keyNextPage, std::nullopt, true },
    { LogicalCommand::LeftPage, "LEFTPAGE", &KeyMap::keyPrevPage, std::nullopt, true },
    { LogicalCommand::Refresh, "REFRESH", &KeyMap::keyRefresh, std::nullopt, false },
    { LogicalCommand::Select, "SELECT", &KeyMap::keySelect, std::nullopt, false },
} };

const CommandInfo& commandInfo(LogicalCommand command);

// The command a key event stands for, or nothing when no command has that key. An empty key matches
// no key code.
std::optional<LogicalCommand> commandForKey(int keyCode, const KeyMap& keys);

} // namespace ombrel::input
