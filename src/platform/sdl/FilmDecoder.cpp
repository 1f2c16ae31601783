// FilmDecoder: demuxing, decoding and converting a film's pictures and sound.
#include "platform/sdl/FilmDecoder.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/imgutils.h>
#include <libavutil/log.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <mutex>

namespace ombrel::platform::sdl {

namespace {

    void quietFfmpeg()
    {
        static std::once_flag once;
        std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
    }

    // Opens the file and a decoder for its best stream of the type; false when either fails.
    bool openStream(const std::string& path, AVMediaType type, AVFormatContext*& format, AVCodecContext*& codec,
        int& stream)
    {
        quietFfmpeg();
        if (avformat_open_input(&format, path.c_str(), nullptr, nullptr) < 0)
            return false;
        if (avformat_find_stream_info(format, nullptr) < 0)
            return false;
        const AVCodec* decoder = nullptr;
        stream = av_find_best_stream(format, type, -1, -1, &decoder, 0);
        if (stream < 0 || !decoder)
            return false;
        codec = avcodec_alloc_context3(decoder);
        if (!codec || avcodec_parameters_to_context(codec, format->streams[stream]->codecpar) < 0)
            return false;
        return avcodec_open2(codec, decoder, nullptr) >= 0;
    }

    void closeStream(AVFormatContext*& format, AVCodecContext*& codec)
    {
        avcodec_free_context(&codec);
        avformat_close_input(&format);
    }

} // namespace

std::unique_ptr<FilmVideo> FilmVideo::open(const std::string& path)
{
    std::unique_ptr<FilmVideo> video(new FilmVideo);
    if (!openStream(path, AVMEDIA_TYPE_VIDEO, video->m_format, video->m_codec, video->m_stream))
        return nullptr;
    auto* codec = video->m_codec;
    if (codec->width <= 0 || codec->height <= 0 || codec->width > 8192 || codec->height > 8192)
        return nullptr;
    video->m_size = { codec->width, codec->height };
    video->m_timeBase = av_q2d(video->m_format->streams[video->m_stream]->time_base);
    video->m_frame = av_frame_alloc();
    video->m_packet = av_packet_alloc();
    video->m_scale = sws_getContext(codec->width, codec->height, codec->pix_fmt, codec->width, codec->height,
        AV_PIX_FMT_RGBA, SWS_BILINEAR, nullptr, nullptr, nullptr);
    if (!video->m_frame || !video->m_packet || !video->m_scale)
        return nullptr;
    return video;
}

FilmVideo::~FilmVideo()
{
    sws_freeContext(m_scale);
    av_packet_free(&m_packet);
    av_frame_free(&m_frame);
    closeStream(m_format, m_codec);
}

bool FilmVideo::receive(std::vector<uint8_t>& rgba, double& seconds)
{
    if (avcodec_receive_frame(m_codec, m_frame) < 0)
        return false;
    rgba.resize(static_cast<size_t>(m_size.w) * static_cast<size_t>(m_size.h) * 4);
    uint8_t* planes[4] = { rgba.data(), nullptr, nullptr, nullptr };
    int strides[4] = { m_size.w * 4, 0, 0, 0 };
    sws_scale(m_scale, m_frame->data, m_frame->linesize, 0, m_size.h, planes, strides);
    int64_t pts = m_frame->best_effort_timestamp;
    seconds = pts == AV_NOPTS_VALUE ? 0 : static_cast<double>(pts) * m_timeBase;
    av_frame_unref(m_frame);
    return true;
}

bool FilmVideo::next(std::vector<uint8_t>& rgba, double& seconds)
{
    for (;;) {
        if (receive(rgba, seconds))
            return true;
        if (m_drained)
            return false;
        if (av_read_frame(m_format, m_packet) < 0) {
            avcodec_send_packet(m_codec, nullptr); // drain what the decoder holds
            m_drained = true;
            continue;
        }
        if (m_packet->stream_index == m_stream)
            avcodec_send_packet(m_codec, m_packet);
        av_packet_unref(m_packet);
    }
}

std::vector<int16_t> decodeFilmSound(const std::string& path, int rate, int channels)
{
    std::vector<int16_t> out;
    AVFormatContext* format = nullptr;
    AVCodecContext* codec = nullptr;
    int stream = -1;
    if (!openStream(path, AVMEDIA_TYPE_AUDIO, format, codec, stream)) {
        closeStream(format, codec);
        return out;
    }
    AVChannelLayout outLayout;
    av_channel_layout_default(&outLayout, channels);
    SwrContext* resample = nullptr;
    if (swr_alloc_set_opts2(&resample, &outLayout, AV_SAMPLE_FMT_S16, rate, &codec->ch_layout, codec->sample_fmt,
            codec->sample_rate, 0, nullptr)
            < 0
        || swr_init(resample) < 0) {
        swr_free(&resample);
        closeStream(format, codec);
        return out;
    }
    AVFrame* frame = av_frame_alloc();
    AVPacket* packet = av_packet_alloc();
    // An intro film's sound is seconds long; a runaway file is cut at ten minutes.
    const size_t limit = static_cast<size_t>(rate) * static_cast<size_t>(channels) * 600;
    auto drain = [&] {
        while (avcodec_receive_frame(codec, frame) >= 0) {
            int room = swr_get_out_samples(resample, frame->nb_samples);
            if (room > 0 && out.size() < limit) {
                size_t at = out.size();
                out.resize(at + static_cast<size_t>(room) * static_cast<size_t>(channels));
                uint8_t* dst[1] = { reinterpret_cast<uint8_t*>(out.data() + at) };
                int got = swr_convert(resample, dst, room, const_cast<const uint8_t**>(frame->extended_data),
                    frame->nb_samples);
                out.resize(at + static_cast<size_t>(got < 0 ? 0 : got) * static_cast<size_t>(channels));
            }
            av_frame_unref(frame);
        }
    };
    while (frame && packet && av_read_frame(format, packet) >= 0) {
        if (packet->stream_index == stream && avcodec_send_packet(codec, packet) >= 0)
            drain();
        av_packet_unref(packet);
    }
    if (frame && packet) {
        avcodec_send_packet(codec, nullptr);
        drain();
    }
    av_packet_free(&packet);
    av_frame_free(&frame);
    swr_free(&resample);
    av_channel_layout_uninit(&outLayout);
    closeStream(format, codec);
    return out;
}

} // namespace ombrel::platform::sdl
