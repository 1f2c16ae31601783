// ReplayPlatform: the platform of a replay run: fakes for everything outside the process, the real
// disk, pictures and fonts painted off screen, a virtual clock driven by the script, and the trace.
#pragma once

#include "platform/Platform.h"
#include "platform/fake/FakeCursor.h"
#include "platform/fake/FakeDisplayMode.h"
#include "platform/fake/FakeJoystick.h"
#include "platform/fake/FakeKeyInjector.h"
#include "platform/fake/FakeKeyState.h"
#include "platform/fake/FakeMediaPlayers.h"
#include "platform/fake/FakePower.h"
#include "platform/fake/FakeProcesses.h"
#include "platform/sdl/SdlFonts.h"
#include "platform/sdl/SdlImages.h"
#include "platform/sdl/SdlRenderer.h"
#include "replay/ReplayDriver.h"
#include "replay/ReplayFiles.h"
#include "replay/ReplayScript.h"
#include "replay/TraceWriter.h"
#include "runtime/Clock.h"
#include "runtime/EventLoop.h"

#include <memory>
#include <string>

namespace ombrel::replay {

class ReplayPlatform {
public:
    // The screen and the desktop of a replay unless the command line says otherwise, so that
    // screenshots have one size everywhere.
    static constexpr runtime::PixelSize kScreen { 640, 480 };

    // home: the program's folder with a trailing '/'. tracePath: as TraceWriter takes it. screen: the
    // size of the screen and of the desktop. decoders: the picture decoders' threads; what the run
    // traces and paints is the same whatever their number. Throws std::runtime_error when the trace file
    // or the off-screen surface cannot be made.
    ReplayPlatform(std::string home, ReplayScript script, const std::string& tracePath,
                   runtime::PixelSize screen = kScreen, int decoders = platform::sdl::SdlImages::kDefaultDecoders);
    ~ReplayPlatform();
    ReplayPlatform(const ReplayPlatform&) = delete;
    ReplayPlatform& operator=(const ReplayPlatform&) = delete;

    platform::Platform& platform() { return *m_platform; }
    ReplayDriver& driver() { return *m_driver; }

private:
    std::string m_home;
    runtime::VirtualClock m_clock;
    TraceWriter m_trace;
    runtime::EventLoop m_loop;
    ReplayFiles m_files;
    platform::fake::FakeMediaPlayers m_media;
    platform::fake::FakeProcesses m_processes;
    platform::fake::FakeKeyInjector m_keys;
    platform::fake::FakeKeyState m_keyState;
    platform::fake::FakeJoystick m_joystick;
    platform::fake::FakeCursor m_cursor;
    platform::fake::FakeDisplayMode m_display;
    platform::fake::FakePower m_power;
    platform::sdl::SdlFonts m_fonts;
    platform::sdl::SdlImages m_images;
    std::unique_ptr<platform::sdl::SdlRenderer> m_renderer;
    std::unique_ptr<ReplayDriver> m_driver;
    std::unique_ptr<platform::Platform> m_platform;
};

} // namespace ombrel::replay
