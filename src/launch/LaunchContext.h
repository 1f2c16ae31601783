// LaunchContext: what starting a game and looking after it work on: the browser form and its timers,
// the shared settings, lists and run state, and the platform's processes and keys.
#pragma once

#include "catalogue/Catalogue.h"
#include "config/RunState.h"
#include "config/Settings.h"
#include "platform/KeyInjector.h"
#include "platform/KeyState.h"
#include "platform/Processes.h"
#include "runtime/Form.h"
#include "runtime/Timer.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace ombrel::launch {

// The browser's timers that a launch arms and the ticks after it read, by the browser's names.
struct LaunchTimers
{
    runtime::Timer& timScr; // the countdown to the saver
    runtime::Timer& timfx; // the wait for the goodbye sound before the program ends
    runtime::Timer& timkey; // the first keys into a game
    runtime::Timer& timWfExit; // the watch on the exit key and button while a game runs
    runtime::Timer& timLock; // gives the browser its input back
    runtime::Timer& timfullscreen; // the Modeler emulator's closing Enter
    runtime::Timer& timescape; // the second stage of leaving a game
};

// Made afresh by the browser for each call, so the values in it are those of the moment.
struct LaunchContext
{
    runtime::Form& Main;
    LaunchTimers timers;
    const config::Settings& settings;
    const catalogue::Catalogue& catalogue;
    config::RunState& run; // curPath; runRom and runExe are written here
    bool& keysSent; // the first keys of this launch have gone out
    platform::Processes& processes;
    platform::KeyInjector& keys;
    platform::KeyState& keyState;
    std::optional<int16_t> keyExit; // the EXIT command's key; empty while no key map was read
    // Works out which joystick button leaves a game; called after every launch but those of Extras.
    std::function<void()> checkExitbut;
    // Reads the stick and says whether the exit button is the one button held.
    std::function<bool()> exitButtonDown;
};

} // namespace ombrel::launch
