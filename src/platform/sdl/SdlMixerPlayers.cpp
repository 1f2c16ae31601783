// SdlMixerPlayers: the sound device's opening and closing, SDL_mixer's callbacks, the silent fallback.
#include "platform/sdl/SdlMixerPlayers.h"

#include "platform/fake/FakeMediaPlayer.h"
#include "platform/sdl/AvProbe.h"
#include "platform/sdl/SdlMixerPlayer.h"

#include <atomic>
#include <cstdio>

namespace ombrel::platform::sdl {
namespace {

// NOTE: SDL_mixer's end-of-sound callbacks carry no user data, and SDL_mixer has one device per
// process; this is where its callbacks find the device's bookkeeping. Set only while the device is
// open, by the one SdlMixerPlayers that opened it.
std::atomic<MixerDevice*> s_openDevice { nullptr };

void SDLCALL onChannelFinished(int channel)
{
    if (MixerDevice* device = s_openDevice.load())
        device->channelFinished(channel);
}

void SDLCALL onMusicFinished()
{
    if (MixerDevice* device = s_openDevice.load())
        device->musicFinished();
}

} // namespace

SdlMixerPlayers::SdlMixerPlayers(runtime::EventLoop& loop, runtime::Trace& trace, std::string home)
    : m_loop(loop)
    , m_trace(trace)
    , m_home(std::move(home))
{
    std::string reason;
    if (s_openDevice.load()) {
        reason = "the sound device is already in use by this program";
    } else {
        m_audio = std::make_unique<SdlSubsystems>(SDL_INIT_AUDIO);
        if (!m_audio->ok() || Mix_OpenAudio(44100, MIX_DEFAULT_FORMAT, 2, 2048) != 0) {
            reason = SDL_GetError();
            m_audio.reset();
        }
    }
    if (!m_audio) {
        std::fprintf(stderr, "ombrel: no sound (%s); playing silently\n", reason.c_str());
        return;
    }
    m_device = std::make_shared<MixerDevice>(loop);
    s_openDevice.store(m_device.get());
    Mix_ChannelFinished(onChannelFinished);
    Mix_HookMusicFinished(onMusicFinished);
}

SdlMixerPlayers::~SdlMixerPlayers()
{
    if (!m_device)
        return;
    // Callbacks off first: both calls take the audio lock, so none is running once they return.
    Mix_ChannelFinished(nullptr);
    Mix_HookMusicFinished(nullptr);
    Mix_HaltChannel(-1);
    Mix_HaltMusic();
    m_device->close();
    Mix_CloseAudio();
    s_openDevice.store(nullptr);
}

std::unique_ptr<MediaPlayer> SdlMixerPlayers::create(const std::string& name, MediaKind kind)
{
    if (!m_device)
        return std::make_unique<fake::FakeMediaPlayer>(name, m_loop, m_trace, mediaDurationSeconds, m_home);
    if (kind == MediaKind::Film && filmFactory)
        return filmFactory(name);
    return std::make_unique<SdlMixerPlayer>(name, kind, m_device, m_trace, m_home);
}

} // namespace ombrel::platform::sdl
