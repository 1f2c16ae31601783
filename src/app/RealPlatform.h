// RealPlatform: the platform of a real run: a window, sound, the real clock and the real disk.
#pragma once

#include "app/TracedPower.h"
#include "core/FailureLog.h"
#include "platform/Files.h"
#include "platform/Platform.h"
#include "platform/linux/LogindPower.h"
#include "platform/linux/SpawnProcesses.h"
#include "platform/sdl/FilmFrames.h"
#include "platform/sdl/RealClock.h"
#include "platform/sdl/SdlCursor.h"
#include "platform/sdl/SdlEventSource.h"
#include "platform/sdl/SdlFonts.h"
#include "platform/sdl/SdlImages.h"
#include "platform/sdl/SdlJoystick.h"
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
    // trace). decoders: the picture decoders' threads. Throws std::runtime_error when the window or the
    // trace file cannot be made, and when there is no display to show the window on.
    RealPlatform(std::string home, bool windowed, const std::string& tracePath,
        int decoders = platform::sdl::SdlImages::kDefaultDecoders);
    ~RealPlatform();
    RealPlatform(const RealPlatform&) = delete;
    RealPlatform& operator=(const RealPlatform&) = delete;

    platform::Platform& platform() { return *m_platform; }
    // Where refused pictures and font names no installed font matches are written; null for nowhere.
    // The log is written on the loop's thread only.
    void setFailureLog(core::FailureLog* log) { m_failures = log; }

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
    platform::linux::SpawnProcesses m_processes;
    // Each of the next three falls back to a weaker stand-in, with one warning line, when the machine
    // lacks what it needs (see the constructor).
    std::unique_ptr<platform::KeyInjector> m_keys;
    std::unique_ptr<platform::KeyState> m_keyState;
    platform::sdl::SdlJoystick m_joystick;
    platform::sdl::SdlCursor m_cursor;
    std::unique_ptr<platform::DisplayMode> m_displayBackend;
    std::unique_ptr<platform::DisplayMode> m_display;
    platform::linux::LogindPower m_logind;
    TracedPower m_power;
    std::unique_ptr<platform::Platform> m_platform;
    core::FailureLog* m_failures = nullptr;
};

} // namespace ombrel::app
