// GameTables: where each game stands in the menus of the emulators that are handed their game by key
// presses, and the game numbers of the S11 emulator.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrel::launch {

// Every look-up matches the whole name, exactly and with case ("F1ExhaustNote" but "f1superlap").

// How many Down presses take the Modeler emulator's game list from its first row to the game; nothing
// for a game the list does not hold.
std::optional<int> modelerDownPresses(std::string_view rom);

// The same for the Impact emulators' list.
std::optional<int> impactDownPresses(std::string_view rom);

// The number the S11 emulator takes on its command line for a game, as text; nothing for a game it
// does not know by number.
std::optional<std::string> s11GameNumber(std::string_view rom);

// getS11Game: replaces a ROM name that the S11 emulator knows by number with that number, and leaves
// any other name as it is.
void getS11Game(std::string& runRom);

} // namespace ombrel::launch
