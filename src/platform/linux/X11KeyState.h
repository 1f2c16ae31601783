// X11KeyState: whether a key is held, read from the X server's keyboard, whichever window has the focus.
#pragma once

#include "platform/KeyState.h"
#include "platform/linux/XConnection.h"

#include <memory>

namespace ombrel::platform::linux {

// Asks the server for the whole keyboard at each look, so the exit key is seen while a game holds the
// focus and the program's own window gets no key events. A code counts as down when any key standing
// for it is (either Shift for Shift). Used from the program's event thread only.
class X11KeyState final : public KeyState
{
public:
    // nullptr when the display cannot be opened. A null name means $DISPLAY.
    static std::unique_ptr<X11KeyState> open(const char* displayName = nullptr);

    bool isDown(int vk) override;

private:
    explicit X11KeyState(XConnection connection);

    XConnection m_connection;
};

} // namespace ombrel::platform::linux
