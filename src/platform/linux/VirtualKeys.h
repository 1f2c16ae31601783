// VirtualKeys: Windows virtual-key codes and the keys they stand for under X11 and in the Linux input layer.
#pragma once

#include <span>

namespace ombrel::platform::linux {

struct VirtualKey
{
    int vk; // Windows virtual-key code
    unsigned long keysym; // X11 keysym (a KeySym)
    unsigned short code; // Linux input key code (KEY_*)
};

// Every row. A code may have several rows (Enter and keypad Enter, left and right Shift); the first one
// is the key that injection presses, and reading a key's state counts any of them.
std::span<const VirtualKey> virtualKeys();

// The first row of a code, or nullptr for a code no key stands for.
const VirtualKey* findVirtualKey(int vk);

} // namespace ombrel::platform::linux
