// SdlMixerPlayer: loading, playing, pausing and the volume of one player.
#include "platform/sdl/SdlMixerPlayer.h"

#include "platform/fake/HomeRelative.h"
#include "platform/sdl/AvProbe.h"

#include <algorithm>
#include <cmath>

namespace ombrel::platform::sdl {
namespace {

// Seconds of sound in a decoded chunk, from the device's format.
double chunkSeconds(const Mix_Chunk& chunk)
{
    int frequency = 0;
    Uint16 format = 0;
    int channels = 0;
    if (Mix_QuerySpec(&frequency, &format, &channels) == 0 || frequency <= 0 || channels <= 0)
        return 0;
    const double bytesPerFrame = static_cast<double>(SDL_AUDIO_BITSIZE(format)) / 8.0 * channels;
    if (bytesPerFrame <= 0)
        return 0;
    return static_cast<double>(chunk.alen) / bytesPerFrame / frequency;
}

} // namespace

int mixerVolume(int hundredthsDb)
{
    const int clamped = std::clamp(hundredthsDb, -10000, 0);
    const double level = std::pow(10.0, clamped / 2000.0) * MIX_MAX_VOLUME;
    return std::clamp(static_cast<int>(std::lround(level)), 0, MIX_MAX_VOLUME);
}

SdlMixerPlayer::SdlMixerPlayer(std::string name, MediaKind kind, std::shared_ptr<MixerDevice> device,
    runtime::Trace& trace, std::string home)
    : m_name(std::move(name))
    , m_kind(kind)
    , m_device(std::move(device))
    , m_trace(trace)
    , m_home(std::move(home))
{
    m_id = m_device->addPlayer(this);
    if (!isSong())
        m_channel = m_device->takeChannel(m_id);
}

SdlMixerPlayer::~SdlMixerPlayer()
{
    // Gone from the device first, so a late end or change finds no one to tell.
    m_device->removePlayer(m_id);
    halt();
    m_chunk.reset();
    m_music.reset();
    if (m_channel >= 0)
        m_device->releaseChannel(m_channel);
}

void SdlMixerPlayer::halt()
{
    if (!m_device->isOpen())
        return;
    if (m_chunk && m_channel >= 0)
        Mix_HaltChannel(m_channel);
    if (m_music && m_device->playsMusic(m_id, m_serial))
        Mix_HaltMusic();
}

void SdlMixerPlayer::trace(const std::string& what)
{
    m_trace.effect("media " + m_name + " " + what);
}

void SdlMixerPlayer::setState(int state)
{
    const int old = m_state;
    if (old == state)
        return;
    m_state = state;
    m_device->postChange(m_id, old, state);
}

void SdlMixerPlayer::raise(int oldState, int newState)
{
    // A copy: the handler may destroy this player.
    if (auto handler = onPlayStateChange)
        handler(oldState, newState);
}

void SdlMixerPlayer::endedOnDevice(uint64_t serial)
{
    if (serial != m_serial || m_state == kStopped)
        return;
    const int old = m_state;
    m_state = kStopped;
    trace("end");
    raise(old, kStopped);
}

void SdlMixerPlayer::setFileName(const std::string& path)
{
    const bool wasOpen = !m_fileName.empty();
    halt();
    ++m_serial; // whatever was playing is over, even if its end is still on the way
    m_chunk.reset();
    m_music.reset();
    m_fileName.clear();
    m_duration = 0;
    m_state = kStopped; // no report: see the class comment
    if (path.empty()) {
        if (wasOpen)
            trace("close");
        return;
    }
    if (m_device->isOpen()) {
        if (isSong())
            m_music.reset(Mix_LoadMUS(path.c_str()));
        else if (m_channel >= 0)
            m_chunk.reset(Mix_LoadWAV(path.c_str()));
        if (m_chunk || m_music) {
            m_fileName = path;
            m_duration = mediaDurationSeconds(path);
            if (m_duration <= 0)
                m_duration
                    = m_chunk ? chunkSeconds(*m_chunk) : std::max(Mix_MusicDuration(m_music.get()), 0.0);
        }
    }
    trace("open " + fake::homeRelative(path, m_home) + (m_fileName.empty() ? " failed" : ""));
}

void SdlMixerPlayer::play()
{
    if (m_state == kPlaying || (!m_chunk && !m_music) || !m_device->isOpen())
        return;
    if (m_state == kPaused) {
        if (m_chunk) {
            Mix_Resume(m_channel);
            trace("play");
            setState(kPlaying);
            return;
        }
        if (m_device->playsMusic(m_id, m_serial)) {
            Mix_ResumeMusic();
            trace("play");
            setState(kPlaying);
            return;
        }
        // Another player's song took the music meanwhile: start again from the top.
    }
    ++m_serial;
    if (m_chunk) {
        Mix_HaltChannel(m_channel);
        m_device->startingOnChannel(m_channel, m_id, m_serial);
        Mix_Volume(m_channel, mixerVolume(m_volume));
        if (Mix_PlayChannel(m_channel, m_chunk.get(), 0) < 0) {
            setState(kStopped);
            return;
        }
    } else {
        // Halting first reports the end of the song it cuts off to the player that started it.
        Mix_HaltMusic();
        m_device->startingMusic(m_id, m_serial);
        Mix_VolumeMusic(mixerVolume(m_volume));
        if (Mix_PlayMusic(m_music.get(), 0) < 0) {
            setState(kStopped);
            return;
        }
    }
    trace("play");
    setState(kPlaying);
}

void SdlMixerPlayer::stop()
{
    if (m_state == kStopped)
        return;
    halt();
    ++m_serial;
    trace("stop");
    setState(kStopped);
}

void SdlMixerPlayer::pause()
{
    if (m_state != kPlaying || !m_device->isOpen())
        return;
    if (m_chunk)
        Mix_Pause(m_channel);
    else if (m_device->playsMusic(m_id, m_serial))
        Mix_PauseMusic();
    trace("pause");
    setState(kPaused);
}

void SdlMixerPlayer::setVolume(int hundredthsDb)
{
    const int volume = std::clamp(hundredthsDb, -10000, 0);
    if (volume != m_volume) {
        m_volume = volume;
        trace("volume " + std::to_string(volume));
    }
    if (!m_device->isOpen())
        return;
    if (m_chunk && m_channel >= 0)
        Mix_Volume(m_channel, mixerVolume(m_volume));
    if (m_music && m_device->playsMusic(m_id, m_serial))
        Mix_VolumeMusic(mixerVolume(m_volume));
}

} // namespace ombrel::platform::sdl
