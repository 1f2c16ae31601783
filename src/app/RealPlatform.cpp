// RealPlatform: the composition of a real run.
#include "app/RealPlatform.h"

#include "platform/sdl/FfmpegFilmPlayer.h"

#include <SDL.h>

#include <stdexcept>

namespace ombrel::app {

RealPlatform::RealPlatform(std::string home, bool windowed, const std::string& tracePath)
    : m_home(std::move(home))
    , m_trace(m_clock, tracePath)
    , m_loop(m_clock)
    , m_processes(m_trace, m_home)
    , m_keys(m_trace)
    , m_cursor(m_trace)
    , m_power(m_trace)
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
    m_events.onExposed = [this] { m_renderer->repaint(); };
    m_loop.setSource(&m_events);
    m_media = std::make_unique<platform::sdl::SdlMixerPlayers>(m_loop, m_trace, m_home);
    // The intro film: pictures to the painter, which shows each new one at once.
    m_renderer->setFilms(&m_films);
    m_films.onNewFrame = [this] { m_loop.postTask([this] { m_renderer->repaint(); }); };
    m_media->filmFactory = [this](const std::string& name) {
        return std::make_unique<platform::sdl::FfmpegFilmPlayer>(name, m_loop, m_trace, m_home, m_films);
    };

    SDL_DisplayMode desktop;
    runtime::PixelSize desktopSize = m_renderer->screenSize();
    if (SDL_GetDesktopDisplayMode(0, &desktop) == 0)
        desktopSize = { desktop.w, desktop.h };
    m_display = std::make_unique<platform::fake::FakeDisplayMode>(m_trace, desktopSize);

    m_platform.reset(new platform::Platform { m_loop, m_clock, m_trace, m_files, *m_media, m_processes, m_keys,
                                              m_keyState, m_joystick, m_cursor, *m_display, m_power, *m_renderer,
                                              m_fonts, m_images, m_home });
}

RealPlatform::~RealPlatform()
{
    m_loop.setSource(nullptr);
}

} // namespace ombrel::app
