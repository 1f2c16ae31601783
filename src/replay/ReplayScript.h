// ReplayScript: a replay script read into timed steps. The format is described in docs/replay.md.
#pragma once

#include "platform/Joystick.h"
#include "runtime/InputEvent.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::replay {

struct ScriptStep {
    enum class Action {
        Input, // key, mouse and focus lines: an InputEvent for the loop
        Joy, // the stick's state from now on
        ProcessExit, // the running game ends
        Screenshot, // paint the screen into file
        Dump, // write the program's state to the trace
        End, // the run ends
        // Faults: served with the input of their moment, they change what the outside world answers.
        FailLaunch, // the next program start fails
        FailWrite, // the next write of file (of any file when file is empty) fails
        RefusePower, // the power service refuses with errorNumber from now on
    };
    int64_t at = 0; // virtual milliseconds
    int line = 0; // in the script file, for messages
    Action action = Action::Input;
    runtime::InputEvent input;
    bool hasPosition = false; // Input: a mouse line that gave X Y rather than a target
    platform::JoyInfo joy;
    std::string file; // Screenshot, FailWrite
    int errorNumber = 0; // RefusePower: one of the shutdown error numbers of platform/Power.h
    int systemError = 0; // RefusePower: the errno behind it, 0 for none
};

class ReplayScript {
public:
    // Reads a script. On an error, returns nullopt and sets error to "<name> line <n>: <what>".
    static std::optional<ReplayScript> parse(std::string_view text, const std::string& name, std::string& error);
    static std::optional<ReplayScript> load(const std::string& path, std::string& error);

    const std::vector<ScriptStep>& steps() const { return m_steps; }

private:
    std::vector<ScriptStep> m_steps;
};

} // namespace ombrel::replay
