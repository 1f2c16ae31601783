// RealPlatform: the platform of a real run: a window, sound, the real clock and the real disk.
#pragma once

#include "platform/Files.h"
#include "platform/Platform.h"
#include "platform/fake/FakeDisplayMode.h"
#include "platform/fake/FakeJoystick.h"
#include "platform/fake/FakeKeyInjector.h"
#include "platform/fake/FakeKeyState.h"
#include "platform/fake/FakePower.h"
#include "platform/fake/FakeProcesses.h"
#include "platform/sdl/FilmFrames.h"
#include "platform/sdl/RealClock.h"
#include "platform/sdl/SdlCursor.h"
#include "platform/sdl/SdlEventSource.h"
#include "platform/sdl/SdlFonts.h"
#include "platform/sdl/SdlImages.h"
#include "platform/sdl/SdlMixerPlayers.h"
#include "platform/sdl/SdlRenderer.h"
#include "replay/TraceWriter.h"
#include "runtime/EventLoop.h"

#include <memory>
#include <string>

namespace ombrel::app {

class RealPlatform {
public:
    // home: the program's folder with a trailing '/'. tracePath: as TraceWriter takes it (empty: no
    // trace). Throws std::runtime_error when the window or the trace file cannot be made.
    RealPlatform(std::string home, bool windowed, const std::string& tracePath);
    ~RealPlatform();
    RealPlatform(const RealPlatform&) = delete;
    RealPlatform& operator=(const RealPlatform&) = delete;

    platform::Platform& platform() { return *m_platform; }

private:
    std::string m_home;
    platform::sdl::RealClock m_clock;
    replay::TraceWriter m_trace;
    platform::sdl::SdlEventSource m_events;
    runtime::EventLoop m_loop;
    platform::DiskFiles m_files;
    platform::sdl::SdlFonts m_fonts;
    platform::sdl::SdlImages m_images;
    std::unique_ptr<platform::sdl::SdlRenderer> m_renderer;
    platform::sdl::FilmFrames m_films;
    std::unique_ptr<platform::sdl::SdlMixerPlayers> m_media;
    // FIXME: real backend comes with the launch of emulators (spawned processes and their wait).
    platform::fake::FakeProcesses m_processes;
    // FIXME: real backend comes with key simulation into emulators (XTest or uinput).
    platform::fake::FakeKeyInjector m_keys;
    // FIXME: real backend comes with the exit key watched while a game runs (global key state).
    platform::fake::FakeKeyState m_keyState;
    // FIXME: real backend comes with joystick input (SDL joystick 0).
    platform::fake::FakeJoystick m_joystick;
    platform::sdl::SdlCursor m_cursor;
    // FIXME: real backend comes with display mode changes (XRandR); until then the desktop keeps its mode.
    std::unique_ptr<platform::fake::FakeDisplayMode> m_display;
    // FIXME: real backend comes with powering off on exit (logind).
    platform::fake::FakePower m_power;
    std::unique_ptr<platform::Platform> m_platform;
};

} // namespace ombrel::app
