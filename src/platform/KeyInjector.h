// KeyInjector: simulated key presses into an emulator, as Windows virtual-key codes.
#pragma once

namespace ombrel::platform {

class KeyInjector {
public:
    virtual ~KeyInjector() = default;
    // keybd_event: press (up false) or release (up true) of a virtual key. Delivered in call order.
    virtual void keyEvent(int vk, bool up) = 0;
    // SetKeyboardState with a zeroed state: release every key the backend holds down.
    virtual void releaseAll() = 0;
};

} // namespace ombrel::platform
