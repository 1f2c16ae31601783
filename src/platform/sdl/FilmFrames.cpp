// FilmFrames: a film's latest picture, shared between threads.
#include "platform/sdl/FilmFrames.h"

namespace ombrel::platform::sdl {

void FilmFrames::publish(const std::string& player, runtime::PixelSize size, std::vector<uint8_t> rgba)
{
    {
        std::lock_guard lock(m_mutex);
        Frame& frame = m_frames[player];
        frame.size = size;
        frame.rgba = std::move(rgba);
        frame.serial = ++m_serial;
    }
    if (onNewFrame)
        onNewFrame();
}

void FilmFrames::clear(const std::string& player)
{
    std::lock_guard lock(m_mutex);
    m_frames.erase(player);
}

bool FilmFrames::newer(const std::string& player, uint64_t serial, Frame& out) const
{
    std::lock_guard lock(m_mutex);
    auto it = m_frames.find(player);
    if (it == m_frames.end() || it->second.serial <= serial)
        return false;
    out = it->second;
    return true;
}

bool FilmFrames::has(const std::string& player) const
{
    std::lock_guard lock(m_mutex);
    return m_frames.count(player) != 0;
}

} // namespace ombrel::platform::sdl
