// KeySimulation: the key presses that work an emulator's own game list after its start, and those that
// leave a game; as plain sequences, and as the browser's timer ticks that send them.
#pragma once

#include "platform/KeyInjector.h"

#include <string_view>
#include <vector>

namespace ombrel::launch {

struct LaunchContext;

// Windows virtual-key codes of the keys pressed into games.
namespace vk {
inline constexpr int kTab = 9;
inline constexpr int kEnter = 13;
inline constexpr int kCtrl = 17;
inline constexpr int kAlt = 18;
inline constexpr int kEsc = 27;
inline constexpr int kDown = 40;
inline constexpr int kA = 65;
inline constexpr int kD = 68;
inline constexpr int kF = 70;
inline constexpr int kQ = 81;
inline constexpr int kX = 88;
}

struct KeyEvent
{
    int vk;
    bool up; // false: the key goes down
    bool operator==(const KeyEvent&) const = default;
};
using KeySequence = std::vector<KeyEvent>;

// A press: down, then up.
KeySequence press(int vk, int times = 1);

// The Modeler emulator's list: three Tabs, then, for a game the list holds, Down to its row, Enter,
// five Tabs and Enter. complete says whether the game was found, and so whether the closing Enter
// follows later.
struct ModelerKeys
{
    KeySequence keys;
    bool complete = false;
};
ModelerKeys modelerListKeys(std::string_view rom);

// The Impact emulators' list: Down to the game's row (the first row for a game it does not hold), Enter.
KeySequence impactListKeys(std::string_view rom);

// The Ultra 64 emulators: Tab, Enter.
KeySequence u64ListKeys();

// Closes the Visual Pinball player (Q), then its editor (Alt+F, X). Alt comes up before F.
KeySequence vpCloseKeys();

// The hot keys that switch the picture to a TV output (Ctrl+Alt+A) and back to the monitor (Ctrl+Alt+D).
KeySequence tvKeys();
KeySequence monitorKeys();

// Sends a sequence back to back; the injector spaces the events as the receiving side needs.
void send(platform::KeyInjector& keys, const KeySequence& sequence);

// The procedures and ticks of the browser, by its names.
void PressKeySim(LaunchContext& ctx); // Modeler; arms timfullscreen when the game was found
void PressKeySim2(LaunchContext& ctx); // Impact
void PressKeySim3(LaunchContext& ctx); // Ultra 64
void PressKeySim4(LaunchContext& ctx); // no key held any more, then Enter
void PressKeySimVPE(LaunchContext& ctx);
// The first keys of a launch, once: chosen by the program that was started.
void timkey_Timer(LaunchContext& ctx);
void timfullscreen_Timer(LaunchContext& ctx);
// The second stage of leaving a game: Visual Pinball's closing keys, or Esc.
void timescape_Timer(LaunchContext& ctx);

} // namespace ombrel::launch
