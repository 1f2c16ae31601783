// ReturnFromGame: the browser's watch over a running game: the exit control turned into the Esc the
// emulators take, the input given back after a timed launch, and the TV output's hot keys.
#pragma once

#include "platform/KeyInjector.h"

namespace ombrel::launch {

struct LaunchContext;

// Every 5 ms while a game runs (and while the browser is in the background): the exit key or the exit
// button sends Esc into the game. When the exit key is Esc itself, the game has had the real one and no
// second is sent. The Modeler, Ultra 64 and Visual Pinball lists get a second stage 200 ms later
// (timescape) and the watch ends; for the others Esc repeats on every tick while the control is held.
void timWfExit_Timer(LaunchContext& ctx);

// Five seconds after a timed launch: the start-up cover goes, the browser takes input again, and the
// next launch may send its first keys.
void timLock_Timer(LaunchContext& ctx);

// The hot keys that put the picture on the TV output at start, and back on the monitor at the end.
void startTv(platform::KeyInjector& keys);
void startMonitor(platform::KeyInjector& keys);

} // namespace ombrel::launch
