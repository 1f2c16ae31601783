// RealPlatform: the composition of a real run.
#include "app/RealPlatform.h"

#include "app/TracedDisplayMode.h"
#include "platform/fake/FakeDisplayMode.h"
#include "platform/fake/FakeKeyInjector.h"
#include "platform/linux/MakeKeyInjector.h"
#include "platform/linux/X11KeyState.h"
#include "platform/linux/XrandrDisplayMode.h"
#include "platform/sdl/FfmpegFilmPlayer.h"
#include "platform/sdl/SdlKeyState.h"

#include <SDL.h>

#include <iostream>
#include <stdexcept>

namespace ombrel::app {

namespace {

void warn(const std::string& text)
{
    std::cerr << "ombrel: " << text << "\n";
}

// SDL falls back on drivers that draw into memory when it finds no display; a cabinet run on one of
// them would go on unseen.
bool showsNothing(const char* videoDriver)
{
    const std::string name = videoDriver ? videoDriver : "";
    return name.empty() || name == "offscreen" || name == "dummy" || name == "evdev";
}

} // namespace

RealPlatform::RealPlatform(std::string home, bool windowed, const std::string& tracePath, int decoders)
    : m_home(std::move(home))
    , m_trace(m_clock, tracePath)
    , m_loop(m_clock)
    , m_images(platform::sdl::SdlImages::Limits {}, decoders)
    , m_processes(m_trace, m_home)
    , m_cursor(m_trace)
    , m_power(m_logind, m_trace)
{
    if (!m_trace.ok())
        throw std::runtime_error("cannot write the trace file " + tracePath);
    // A game that takes the focus must not minimise the front end: it stays behind the game.
    SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
    std::string error;
    platform::sdl::SdlRenderer::WindowOptions options;
    options.windowed = windowed;
    m_renderer = platform::sdl::SdlRenderer::openWindow(options, m_fonts, m_images, error);
    if (!m_renderer)
        throw std::runtime_error(error);
    if (const char* driver = SDL_GetCurrentVideoDriver(); showsNothing(driver))
        throw std::runtime_error(std::string("no display to show the cabinet on (SDL video driver \"")
            + (driver ? driver : "") + "\"); start it in a desktop session, or run it with --replay");
    m_events.onExposed = [this] { m_renderer->repaint(); };
    m_fonts.onUnmatched = [this](const std::string& name) {
        if (m_failures)
            m_failures->noteAt("fonts", "no installed font matches \"" + name + "\"; DejaVu Sans stands in");
    };
    // A refusal is said on the thread that asked for the picture, the loop's; it may be in the middle
    // of painting, so the note is written after it.
    m_images.onRefused = [this](const std::string& path, const std::string& why) {
        m_loop.postTask([this, path, why] {
            if (m_failures)
                m_failures->noteAt("pictures", path + " is not shown: " + why);
        });
    };
    m_loop.setSource(&m_events);
    // While the program waited for a game, keys and clicks gathered in the window's queue (typed before
    // the game's window came up, or sent to the window all the same); none of them is the browser's.
    // Then the window takes the keyboard back: without a window manager (a bare cabinet session)
    // nobody else gives it back when the game's window goes.
    m_processes.afterWait = [this] {
        m_events.dropInput();
        if (SDL_Window* window = m_renderer->window()) {
            SDL_RaiseWindow(window);
            SDL_SetWindowInputFocus(window);
        }
    };
    m_media = std::make_unique<platform::sdl::SdlMixerPlayers>(m_loop, m_trace, m_home);
    // The intro film: pictures to the painter, which shows each new one at once.
    m_renderer->setFilms(&m_films);
    m_films.onNewFrame = [this] { m_loop.postTask([this] { m_renderer->repaint(); }); };
    m_media->filmFactory = [this](const std::string& name) {
        return std::make_unique<platform::sdl::FfmpegFilmPlayer>(name, m_loop, m_trace, m_home, m_films);
    };

    m_keys = platform::linux::makeKeyInjector(m_trace);
    if (!m_keys) {
        warn("no writable /dev/uinput and no X display: keys meant for games are not sent");
        m_keys = std::make_unique<platform::fake::FakeKeyInjector>(m_trace);
    }
    m_keyState = platform::linux::X11KeyState::open();
    if (!m_keyState) {
        warn("no X display: a game's exit key is seen only while the front end has the keyboard");
        m_keyState = std::make_unique<platform::sdl::SdlKeyState>();
    }

    m_displayBackend = platform::linux::XrandrDisplayMode::open();
    if (m_displayBackend) {
        m_display = std::make_unique<TracedDisplayMode>(*m_displayBackend, m_trace);
    } else {
        SDL_DisplayMode desktop;
        runtime::PixelSize desktopSize = m_renderer->screenSize();
        if (SDL_GetDesktopDisplayMode(0, &desktop) == 0)
            desktopSize = { desktop.w, desktop.h };
        warn("no X display with XRandR: the screen keeps its mode");
        m_display = std::make_unique<platform::fake::FakeDisplayMode>(m_trace, desktopSize);
    }

    m_platform.reset(new platform::Platform { m_loop, m_clock, m_trace, m_files, *m_media, m_processes,
                                              *m_keys, *m_keyState, m_joystick, m_cursor, *m_display, m_power,
                                              *m_renderer, m_fonts, m_images, m_home });
}

RealPlatform::~RealPlatform()
{
    m_processes.afterWait = nullptr;
    m_loop.setSource(nullptr);
}

} // namespace ombrel::app
