// FilmFrames: the latest picture of each playing film, handed from the film's thread to the painter.
#pragma once

#include "runtime/Geometry.h"

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace ombrel::platform::sdl {

class FilmFrames {
public:
    struct Frame {
        runtime::PixelSize size;
        std::vector<uint8_t> rgba; // 4 bytes a pixel, rows without padding
        uint64_t serial = 0; // grows with every new picture
    };

    // Any thread.
    void publish(const std::string& player, runtime::PixelSize size, std::vector<uint8_t> rgba);
    void clear(const std::string& player);
    // Copies the picture when it is newer than `serial`; false when there is none newer.
    bool newer(const std::string& player, uint64_t serial, Frame& out) const;
    bool has(const std::string& player) const;

    // Called (on the film's thread) after each new picture: the screen must be painted again.
    std::function<void()> onNewFrame;

private:
    mutable std::mutex m_mutex;
    std::map<std::string, Frame> m_frames;
    uint64_t m_serial = 0;
};

} // namespace ombrel::platform::sdl
