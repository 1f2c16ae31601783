// JoystickMap: reading joystick.ini, the words' commands, and which controls a reading fires.
#include "input/JoystickMap.h"

#include "core/FieldReader.h"
#include "core/TextCodec.h"
#include "platform/FieldFile.h"

namespace ombrel::input {

namespace {

// The field without its label, or nothing when it is shorter than the label. A label written in UTF-8
// counts its characters, so a label with an accent is as long as it looks in an editor.
std::optional<std::string> withoutLabel(const std::string& field)
{
    if (!core::isValidUtf8(field))
        return field.size() < kJoyLabelLength ? std::nullopt : std::optional(field.substr(kJoyLabelLength));
    size_t characters = 0;
    for (size_t i = 0; i < field.size(); ++i) {
        const bool continuation = (static_cast<unsigned char>(field[i]) & 0xC0) == 0x80;
        if (continuation)
            continue;
        if (characters == kJoyLabelLength)
            return field.substr(i);
        ++characters;
    }
    return characters < kJoyLabelLength ? std::nullopt : std::optional(std::string());
}

} // namespace

std::string GetJoyKeys(const std::string& path, JoystickMap& map)
{
    std::optional<core::FieldReader> file = platform::openFieldFile(path);
    if (!file)
        return std::string(kJoystickFileName) + ": cannot open " + path;
    return readJoyKeys(*file, map);
}

std::string readJoyKeys(core::FieldReader& file, JoystickMap& map)
{
    size_t index = 0;
    while (index < map.joyKeys.size()) {
        if (file.atEnd())
            return std::string(kJoystickFileName) + ": the file ends after " + std::to_string(index) + " of "
                + std::to_string(kJoyControls) + " bindings";
        const std::string field = file.readField();
        if (field.empty() || field.front() == '\'')
            continue;
        std::optional<std::string> word = withoutLabel(field);
        if (!word)
            return std::string(kJoystickFileName) + " line " + std::to_string(file.fieldLine()) + ": \""
                + field + "\" is shorter than its " + std::to_string(kJoyLabelLength) + "-character label";
        map.joyKeys[index] = core::trimmed(*word);
        ++index;
    }
    return std::string();
}

std::optional<LogicalCommand> joyCommand(std::string_view word)
{
    const std::string upper = core::asciiUpper(word);
    for (const CommandInfo& info : kCommands)
        if (info.command != LogicalCommand::Info && upper == info.name)
            return info.command;
    return std::nullopt;
}

void checkExitbut(JoystickMap& map)
{
    for (int i = 0; i < kJoyButtons; ++i) {
        if (map.joyKeys[static_cast<size_t>(i)] == "Exit") {
            map.exitButton = static_cast<int16_t>(1 << i);
            return;
        }
    }
}

std::vector<int> stickControls(const platform::JoyInfo& joy)
{
    std::vector<int> fired;
    if (joy.y > kJoyHigh)
        fired.push_back(kJoyDown);
    if (joy.y < kJoyLow)
        fired.push_back(kJoyUp);
    if (joy.x > kJoyHigh)
        fired.push_back(kJoyRight);
    if (joy.x < kJoyLow)
        fired.push_back(kJoyLeft);
    return fired;
}

std::optional<int> buttonControl(uint32_t buttons)
{
    for (int i = 0; i < kJoyButtons; ++i)
        if (buttons == (uint32_t { 1 } << i))
            return i;
    return std::nullopt;
}

} // namespace ombrel::input
