// StateDump: the program's state as the lines of a replay "dump": forms, their timers and controls,
// the game list, the shared run state, and the settings as they were read.
#pragma once

#include <string>
#include <vector>

namespace ombrel::platform {
class Fonts;
}

namespace ombrel::runtime {
class FormStack;
}

namespace ombrel::startup {

struct Cabinet;

// One string per line, without the "dump " in front. The order of lines and of fields in a line is
// fixed (docs/replay.md) so that a test or an outside checker can read the dump back.
std::vector<std::string> dumpState(
    const runtime::FormStack& forms, const Cabinet& cabinet, platform::Fonts& fonts);

} // namespace ombrel::startup
