// KeyState: GetKeyState: is a virtual key held down now, read globally, even while a game has the
// system's focus.
#pragma once

namespace ombrel::platform {

class KeyState {
public:
    virtual ~KeyState() = default;
    virtual bool isDown(int vk) = 0;
};

} // namespace ombrel::platform
