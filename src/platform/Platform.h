// Platform: everything outside the process, as the core sees it. app/ builds one: real (SDL and
// Linux backends) or replay (fakes, virtual clock, trace). Nothing below app/ asks which.
#pragma once

#include "platform/Cursor.h"
#include "platform/DisplayMode.h"
#include "platform/Files.h"
#include "platform/Fonts.h"
#include "platform/Images.h"
#include "platform/Joystick.h"
#include "platform/KeyInjector.h"
#include "platform/KeyState.h"
#include "platform/MediaPlayer.h"
#include "platform/Power.h"
#include "platform/Processes.h"
#include "platform/Renderer.h"
#include "runtime/Clock.h"
#include "runtime/EventLoop.h"
#include "runtime/Trace.h"

#include <string>

namespace ombrel::platform {

struct Platform {
    runtime::EventLoop& loop; // made first, over the platform's clock and event source
    runtime::Clock& clock;
    runtime::Trace& trace;
    Files& files;
    MediaPlayers& media;
    Processes& processes;
    KeyInjector& keys;
    KeyState& keyState;
    Joystick& joystick;
    Cursor& cursor;
    DisplayMode& display;
    Power& power;
    Renderer& renderer;
    Fonts& fonts;
    Images& images;
    std::string home; // the program's folder, with a trailing '/'
};

} // namespace ombrel::platform
