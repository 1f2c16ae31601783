// Commands: looking a key up in the key map.
#include "input/Commands.h"

namespace ombrel::input {

const CommandInfo& commandInfo(LogicalCommand command)
{
    for (const CommandInfo& info : kCommands)
        if (info.command == command)
            return info;
    return kCommands.front(); // every command is in the table
}

std::optional<LogicalCommand> commandForKey(int keyCode, const KeyMap& keys)
{
    for (const CommandInfo& info : kCommands) {
        const KeyCode& key = keys.*info.key;
        if (key && *key == keyCode)
            return info.command;
    }
    return std::nullopt;
}

} // namespace ombrel::input
