// CabinetKeys: the key map of a usual cabinet, shared by the key-map and command tests.
#pragma once

#include "input/KeyMap.h"

namespace ombrel::test {

inline input::KeyMap cabinetKeys()
{
    input::KeyMap keys;
    keys.keyUp = 38;
    keys.keyDown = 40;
    keys.keyNextPage = 34;
    keys.keyPrevPage = 33;
    keys.keyRefresh = 116;
    keys.keyConfig = 9;
    keys.keyNextPath = 39;
    keys.keyPrevPath = 37;
    keys.keySelect = 13;
    keys.keyExit = 27;
    keys.keySaver = 53;
    keys.keyMute = 77;
    keys.keyInfo = 49;
    return keys;
}

} // namespace ombrel::test
