// ReplayPlatform: the composition of a replay run.
#include "replay/ReplayPlatform.h"

#include "platform/sdl/AvProbe.h"

#include <stdexcept>

namespace ombrel::replay {

ReplayPlatform::ReplayPlatform(std::string home, ReplayScript script, const std::string& tracePath,
                               runtime::PixelSize screen, int decoders)
    : m_home(std::move(home))
    , m_trace(m_clock, tracePath)
    , m_loop(m_clock)
    , m_files(m_home)
    // Sounds last as long as their files say, as they do when a real run has no sound device.
    , m_media(m_loop, m_trace, platform::sdl::mediaDurationSeconds, m_home)
    , m_processes(m_trace, m_home)
    , m_keys(m_trace)
    , m_cursor(m_trace)
    , m_display(m_trace, screen)
    , m_power(m_trace)
    , m_images(platform::sdl::SdlImages::Limits {}, decoders)
{
    if (!m_trace.ok())
        throw std::runtime_error("cannot write the trace file " + tracePath);
    m_renderer = platform::sdl::SdlRenderer::offscreen(screen, m_fonts, m_images);
    if (!m_renderer)
        throw std::runtime_error("cannot make an off-screen surface to paint on");
    m_driver = std::make_unique<ReplayDriver>(std::move(script), m_loop, m_clock, m_trace,
        ReplayDevices { m_keyState, m_joystick, m_cursor, m_processes, m_power, m_files, *m_renderer });
    m_platform.reset(new platform::Platform { m_loop, m_clock, m_trace, m_files, m_media, m_processes, m_keys,
                                              m_keyState, m_joystick, m_cursor, m_display, m_power, *m_renderer,
                                              m_fonts, m_images, m_home });
}

ReplayPlatform::~ReplayPlatform() = default;

} // namespace ombrel::replay
