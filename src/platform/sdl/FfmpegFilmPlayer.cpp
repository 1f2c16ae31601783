// FfmpegFilmPlayer: the film's thread paces its pictures by the clock, and its sound plays on an SDL
// audio device of its own, so the film needs nothing from the sound effects' mixer.
#include "platform/sdl/FfmpegFilmPlayer.h"

#include "platform/sdl/AvProbe.h"
#include "platform/sdl/FilmDecoder.h"

#include <SDL.h>

#include <chrono>
#include <filesystem>

namespace ombrel::platform::sdl {

namespace {
    constexpr int kRate = 44100;
    constexpr int kChannels = 2;
}

FfmpegFilmPlayer::FfmpegFilmPlayer(std::string name, runtime::EventLoop& loop, runtime::Trace& trace,
    std::string home, FilmFrames& frames)
    : m_name(std::move(name))
    , m_loop(loop)
    , m_trace(trace)
    , m_home(std::move(home))
    , m_frames(frames)
{
}

FfmpegFilmPlayer::~FfmpegFilmPlayer()
{
    *m_alive = false;
    halt();
}

void FfmpegFilmPlayer::trace(const std::string& what)
{
    m_trace.effect("media " + m_name + " " + what);
}

void FfmpegFilmPlayer::setFileName(const std::string& path)
{
    halt();
    m_state = kStopped;
    m_fileName.clear();
    m_duration = 0;
    if (path.empty())
        return;
    std::error_code ec;
    bool isFile = std::filesystem::is_regular_file(path, ec);
    double seconds = isFile ? mediaDurationSeconds(path) : -1;
    std::string shown = path.compare(0, m_home.size(), m_home) == 0 ? path.substr(m_home.size()) : path;
    trace("open " + shown);
    // A file that is no film reads back empty, which is how the caller learns it cannot be played.
    if (seconds < 0 || !FilmVideo::open(path))
        return;
    m_fileName = path;
    m_duration = seconds;
}

void FfmpegFilmPlayer::play()
{
    if (m_fileName.empty() || m_state == kPlaying)
        return;
    halt();
    trace("play");
    m_stop = false;
    uint64_t serial = ++m_serial;
    m_thread = std::thread([this, path = m_fileName, serial] { run(path, serial); });
    setState(kPlaying);
}

void FfmpegFilmPlayer::run(std::string path, uint64_t serial)
{
    std::vector<int16_t> sound = decodeFilmSound(path, kRate, kChannels);
    if (!sound.empty()) {
        SDL_AudioSpec want {};
        want.freq = kRate;
        want.format = AUDIO_S16SYS;
        want.channels = kChannels;
        want.samples = 2048;
        if (SDL_WasInit(SDL_INIT_AUDIO) || SDL_InitSubSystem(SDL_INIT_AUDIO) == 0)
            m_audio = SDL_OpenAudioDevice(nullptr, 0, &want, nullptr, 0);
        if (m_audio) {
            SDL_QueueAudio(m_audio, sound.data(), static_cast<uint32_t>(sound.size() * sizeof(int16_t)));
            SDL_PauseAudioDevice(m_audio, 0);
        }
    }
    const auto start = std::chrono::steady_clock::now();
    auto sleepUntil = [&](double seconds) {
        auto due = start + std::chrono::duration_cast<std::chrono::steady_clock::duration>(std::chrono::duration<double>(seconds));
        while (!m_stop && std::chrono::steady_clock::now() < due)
            std::this_thread::sleep_for(std::min<std::chrono::steady_clock::duration>(due - std::chrono::steady_clock::now(),
                std::chrono::milliseconds(10)));
    };
    if (auto video = FilmVideo::open(path)) {
        std::vector<uint8_t> rgba;
        double at = 0;
        while (!m_stop && video->next(rgba, at)) {
            sleepUntil(at);
            if (!m_stop)
                m_frames.publish(m_name, video->size(), std::move(rgba));
            rgba = {};
        }
    }
    // The film ends when both its pictures and its sound have.
    double soundSeconds = static_cast<double>(sound.size()) / (kRate * kChannels);
    sleepUntil(std::max(soundSeconds, 0.0));
    if (m_stop)
        return;
    m_loop.postTask([this, alive = std::weak_ptr<bool>(m_alive), serial] {
        if (alive.expired() || serial != m_serial || m_state != kPlaying)
            return;
        trace("end");
        setState(kStopped);
    });
}

void FfmpegFilmPlayer::halt()
{
    m_stop = true;
    if (m_thread.joinable())
        m_thread.join();
    if (m_audio) {
        SDL_CloseAudioDevice(m_audio);
        m_audio = 0;
    }
    m_frames.clear(m_name);
}

void FfmpegFilmPlayer::stop()
{
    if (m_state == kStopped)
        return;
    trace("stop");
    halt();
    setState(kStopped);
}

void FfmpegFilmPlayer::pause()
{
    // A film is not paused on the cabinet; the intro only plays and stops.
    if (m_state == kPlaying)
        trace("pause");
}

void FfmpegFilmPlayer::setState(int state)
{
    int old = m_state;
    if (old == state)
        return;
    m_state = state;
    // Reported on a later turn, as the other players do: a handler reads the player as its caller left it.
    m_loop.postTask([this, alive = std::weak_ptr<bool>(m_alive), old, state] {
        if (!alive.expired() && onPlayStateChange)
            onPlayStateChange(old, state);
    });
}

} // namespace ombrel::platform::sdl
