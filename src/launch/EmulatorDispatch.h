// EmulatorDispatch: from the selected row to a started game: which program, with which command line and
// working folder, and how the browser waits for it (runEmu).
#pragma once

#include "catalogue/Catalogue.h"
#include "config/Settings.h"

#include <optional>
#include <string>

namespace ombrel::launch {

struct LaunchContext;

enum class LaunchKind {
    // The browser's thread waits for the game to end: user paths and Extras.
    Blocking,
    // The program starts and the browser runs on behind it, with timers that press its keys, watch the
    // exit control and give the input back: the fixed emulators.
    Timed,
    // Visual Pinball: the table file is handed to the desktop's "Play" action; timed, but no first keys.
    Shell,
};

struct LaunchPlan
{
    LaunchKind kind = LaunchKind::Blocking;
    std::string commandLine; // one string, exactly as built; for Shell, the file handed to the action
    std::string folder; // the working folder, as the settings spell it
    bool checkExitbut = true; // Extras leave the exit button as it is
    bool operator==(const LaunchPlan&) const = default;
};

// What runEmu works out before it starts anything.
struct Dispatch
{
    std::string runExe; // the program's bare file name, as the launch leaves it
    std::string runRom; // its argument, as the launch leaves it
    std::optional<LaunchPlan> plan; // nothing: no program is known for the row
};

// Pure: the program, the argument and the launch for row (ListIndex + 1) of list curPath. runExe and
// runRom come in as the last launch left them: a launch that names no program keeps the old ones.
//
// The branch follows the program's name, not the list: a user path whose emulator is spelt like one of
// the fixed emulators' programs ("daphne.exe") is started as that emulator is, with its folder and
// options. Folders are joined by plain concatenation, so they must carry their trailing separator. A
// user path's command line always has the blank before its options, also when they are empty.
Dispatch dispatch(int curPath, int row, const config::Settings& settings,
    const catalogue::Catalogue& catalogue, std::string runExe, std::string runRom);

// Starts the game of List1's row listIndex on the current list: the countdown to the saver and the
// exit's goodbye are called off, the program starts, and then either the browser waits for it (and
// takes the focus back), or the timers of a timed launch are armed and the browser is locked for its
// first seconds. A program that cannot be started is not reported: a blocking launch comes back at
// once, a timed one runs its timers all the same.
void runEmu(LaunchContext& ctx, int listIndex);

} // namespace ombrel::launch
