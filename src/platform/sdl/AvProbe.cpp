// AvProbe: media lengths through libavformat.
#include "platform/sdl/AvProbe.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/log.h>
}

#include <cmath>
#include <memory>
#include <mutex>

namespace ombrel::platform::sdl {
namespace {

struct InputCloser
{
    void operator()(AVFormatContext* ctx) const { avformat_close_input(&ctx); }
};

} // namespace

double mediaDurationSeconds(const std::string& path)
{
    // Hand-placed files are often not media at all; FFmpeg's complaints about them are noise on the
    // cabinet's console.
    static std::once_flag quiet;
    std::call_once(quiet, [] { av_log_set_level(AV_LOG_QUIET); });

    if (path.empty())
        return -1;
    AVFormatContext* raw = nullptr;
    if (avformat_open_input(&raw, path.c_str(), nullptr, nullptr) < 0)
        return -1;
    std::unique_ptr<AVFormatContext, InputCloser> ctx(raw);
    // A failure here still leaves what the header said.
    (void)avformat_find_stream_info(ctx.get(), nullptr);

    if (ctx->duration != AV_NOPTS_VALUE && ctx->duration > 0)
        return static_cast<double>(ctx->duration) / AV_TIME_BASE;
    double longest = 0;
    for (unsigned i = 0; i < ctx->nb_streams; ++i) {
        const AVStream* stream = ctx->streams[i];
        if (stream->duration == AV_NOPTS_VALUE || stream->duration <= 0)
            continue;
        double seconds = static_cast<double>(stream->duration) * av_q2d(stream->time_base);
        if (std::isfinite(seconds) && seconds > longest)
            longest = seconds;
    }
    return longest;
}

} // namespace ombrel::platform::sdl
