// JoystickMap: joystick.ini, the words that bind the stick's four directions and twelve buttons to
// the browser's commands, and how one reading of the stick picks the controls it fires.
#pragma once

#include "input/Commands.h"
#include "platform/Joystick.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::core {
class FieldReader;
}

namespace ombrel::input {

inline constexpr const char* kJoystickFileName = "joystick.ini";

// The controls, by index: buttons 1 to 12 are 0 to 11, then the stick's four directions. The index is
// also the place of the control's row among the file's usable rows.
inline constexpr int kJoyButtons = 12;
inline constexpr int kJoyControls = 16;
inline constexpr int kJoyUp = 12;
inline constexpr int kJoyDown = 13;
inline constexpr int kJoyLeft = 14;
inline constexpr int kJoyRight = 15;

// An axis counts as pushed only strictly beyond these; between them lies the dead zone round the
// centre (the axes report 0 to 65535).
inline constexpr uint32_t kJoyLow = 20000;
inline constexpr uint32_t kJoyHigh = 40000;

// Each row of joystick.ini starts with a label of this many characters that nobody reads.
inline constexpr size_t kJoyLabelLength = 7;

// The bindings, read once at boot and shared by every form that polls the stick.
struct JoystickMap
{
    // The word of each control as the file has it, blanks trimmed, case kept; empty binds nothing.
    std::array<std::string, kJoyControls> joyKeys;
    // Mask of the one button that leaves a running game; 0 while no button is known for it.
    int16_t exitButton = 0;
};

// Reads joystick.ini into map.joyKeys: fields are taken as the shared reading rule gives them (up to a
// comma or a line end); an empty field or one starting with "'" is skipped, and every other one, its
// label dropped, binds the next control. The reading stops after the sixteenth binding, at the end of
// the file, or at a field shorter than the label; the bindings read so far stand and the others keep
// what they held. Returns an empty string, or why the reading stopped early.
std::string GetJoyKeys(const std::string& path, JoystickMap& map);

// The same on a file already opened, from the reader's place.
std::string readJoyKeys(core::FieldReader& file, JoystickMap& map);

// The command a word of the file stands for, in any case of letters. INFO and unknown words give
// nothing: the joystick cannot open the game's notes.
std::optional<LogicalCommand> joyCommand(std::string_view word);

// Looks for the exit button: the first of the twelve buttons whose word is "Exit", spelt exactly so.
// The stick's directions never count. Without such a button exitButton keeps what it held.
void checkExitbut(JoystickMap& map);

// The stick directions that a reading pushes, in the order the poll fires them: down, up, right,
// left. A diagonal pushes two.
std::vector<int> stickControls(const platform::JoyInfo& joy);

// The button control that a buttons word fires: only a single button held alone counts, so two
// buttons together, or a button beyond the twelfth, fire nothing.
std::optional<int> buttonControl(uint32_t buttons);

} // namespace ombrel::input
