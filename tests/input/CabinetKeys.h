// CabinetKeys: the key map of a usual cabinet, shared by the key-map and command tests.
#pragma once

#include "input/KeyMap.h"

namespace ombrel::test {

// In omkeys.cfg's order: arrows for rows and lists, Page Down and Up, F5, Tab, Enter, Esc, 5, M, 1.
inline input::KeyMap cabinetKeys()
{
    const int16_t codes[] = { 38, 40, 34, 33, 116, 9, 39, 37, 13, 27, 53, 77, 49 };
    input::KeyMap keys;
    for (size_t i = 0; i < input::kKeyFileOrder.size(); ++i)
        keys.*input::kKeyFileOrder[i] = codes[i];
    return keys;
}

} // namespace ombrel::test
