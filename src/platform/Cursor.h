// Cursor: GetCursorPos / SetCursorPos in screen pixels.
#pragma once

#include "runtime/Geometry.h"

namespace ombrel::platform {

struct CursorPos {
    int x = 0;
    int y = 0;
};

class Cursor {
public:
    virtual ~Cursor() = default;
    virtual CursorPos position() = 0;
    virtual void setPosition(int x, int y) = 0;
};

} // namespace ombrel::platform
