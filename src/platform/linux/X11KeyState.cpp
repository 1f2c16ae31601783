// X11KeyState: virtual keys looked up in the server's key map bits.
#include "platform/linux/X11KeyState.h"

#include "platform/linux/VirtualKeys.h"

#include <X11/Xlib.h>

namespace ombrel::platform::linux {

std::unique_ptr<X11KeyState> X11KeyState::open(const char* displayName)
{
    XConnection connection = XConnection::open(displayName);
    if (!connection)
        return nullptr;
    return std::unique_ptr<X11KeyState>(new X11KeyState(std::move(connection)));
}

X11KeyState::X11KeyState(XConnection connection)
    : m_connection(std::move(connection))
{
}

bool X11KeyState::isDown(int vk)
{
    if (findVirtualKey(vk) == nullptr)
        return false;
    Display* display = m_connection.get();
    char keys[32] = {};
    XQueryKeymap(display, keys);
    for (const auto& key : virtualKeys()) {
        if (key.vk != vk)
            continue;
        const unsigned code = XKeysymToKeycode(display, key.keysym);
        if (code != 0 && (static_cast<unsigned char>(keys[code / 8]) & (1u << (code % 8))) != 0)
            return true;
    }
    return false;
}

} // namespace ombrel::platform::linux
