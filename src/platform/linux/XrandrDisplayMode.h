// XrandrDisplayMode: the X desktop's size and the primary output's mode, read and set through XRandR.
#pragma once

#include "platform/DisplayMode.h"

#include <memory>

namespace ombrel::platform::linux {

// Works on the primary output, or on the first connected one when none is marked primary.
//
// change() looks for a mode of exactly that width and height among the output's modes. With a refresh
// above 0 it takes the mode nearest to it, and fails with kModeBad unless that one lies within 1 Hz
// (monitors report 59.94 where settings say 60); a mode without timings, as virtual screens have,
// matches any refresh. With no refresh it keeps the current refresh if a mode of the new size has it,
// else takes the highest. The screen grows or shrinks to hold every lit output.
//
// X11 has no colour depth per mode: a screen keeps the depth it was started with, so the depth asked
// for is taken and ignored.
//
// The mode the output had when the display was opened is remembered; restore() puts that very mode
// back after a change (the numbers it is given are the program's idea of it, and are not needed), so
// a desktop is not left in the cabinet's mode if the program ends some other way.
class XrandrDisplayMode final : public DisplayMode
{
public:
    // nullptr when the display cannot be opened. A null name means $DISPLAY.
    static std::unique_ptr<XrandrDisplayMode> open(const char* displayName = nullptr);
    ~XrandrDisplayMode() override;
    XrandrDisplayMode(const XrandrDisplayMode&) = delete;
    XrandrDisplayMode& operator=(const XrandrDisplayMode&) = delete;

    runtime::PixelSize desktopSize() override;
    int change(int width, int height, int bits, int freq) override;
    int restore(int width, int height, int bits, int freq) override;

private:
    struct State;
    explicit XrandrDisplayMode(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};

} // namespace ombrel::platform::linux
