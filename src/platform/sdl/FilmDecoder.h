// FilmDecoder: a film's pictures and sound through the FFmpeg libraries, for the intro film.
#pragma once

#include "runtime/Geometry.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct AVFormatContext;
struct AVCodecContext;
struct AVFrame;
struct AVPacket;
struct SwsContext;

namespace ombrel::platform::sdl {

// The film's pictures, one after another, as RGBA (4 bytes a pixel, rows without padding).
class FilmVideo {
public:
    // nullptr when the file cannot be opened or has no picture stream.
    static std::unique_ptr<FilmVideo> open(const std::string& path);
    ~FilmVideo();
    FilmVideo(const FilmVideo&) = delete;
    FilmVideo& operator=(const FilmVideo&) = delete;

    runtime::PixelSize size() const { return m_size; }
    // The next picture and its time from the film's start, in seconds; false at the end.
    bool next(std::vector<uint8_t>& rgba, double& seconds);

private:
    FilmVideo() = default;
    bool receive(std::vector<uint8_t>& rgba, double& seconds);

    AVFormatContext* m_format = nullptr;
    AVCodecContext* m_codec = nullptr;
    AVFrame* m_frame = nullptr;
    AVPacket* m_packet = nullptr;
    SwsContext* m_scale = nullptr;
    int m_stream = -1;
    double m_timeBase = 0;
    bool m_drained = false;
    runtime::PixelSize m_size;
};

// The whole sound track as interleaved signed 16-bit samples at the given rate and channel count;
// empty when the file has none or it cannot be decoded.
std::vector<int16_t> decodeFilmSound(const std::string& path, int rate, int channels);

} // namespace ombrel::platform::sdl
