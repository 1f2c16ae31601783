// InputEvent: input as the runtime sees it, in the system's own words: Windows virtual-key codes,
// the Shift mask 1/2/4, mouse buttons 1 (left) and 2 (right), screen pixels.
#pragma once

#include <string>

namespace ombrel::runtime {

enum class InputKind {
    KeyDown, // vk, shift; a held key repeats as further KeyDown events
    KeyUp,
    MouseDown, // button, x, y (or target)
    MouseUp,
    MouseMove, // x, y
    Click, // target or x, y: down, up and click on one control
    DblClick, // target or x, y: down, up, click, dblclick, up
    FocusLost, // the whole window lost the system's focus (a game took over)
    FocusGained,
    Quit, // the window was closed
};

struct InputEvent {
    InputKind kind = InputKind::KeyDown;
    int vk = 0;
    int shift = 0; // 1 Shift, 2 Ctrl, 4 Alt
    int button = 1;
    int clicks = 1; // MouseDown: 2 for the second press of a double click
    int x = 0; // screen pixels
    int y = 0;
    std::string target; // "Form.control(index)": aim a mouse event at a control by name
};

// Shift mask bits, as the key and mouse events carry them.
constexpr int kShiftMask = 1;
constexpr int kCtrlMask = 2;
constexpr int kAltMask = 4;

} // namespace ombrel::runtime
