// MixerDevice: channel bookkeeping and the hand-over of play-state changes to the loop.
#include "platform/sdl/MixerDevice.h"

#include "platform/sdl/SdlMixerPlayer.h"

#include <SDL_mixer.h>

#include <algorithm>

namespace ombrel::platform::sdl {

MixerDevice::MixerDevice(runtime::EventLoop& loop)
    : m_loop(loop)
{
}

uint64_t MixerDevice::addPlayer(SdlMixerPlayer* player)
{
    const uint64_t id = m_nextId++;
    m_players.emplace(id, player);
    return id;
}

void MixerDevice::removePlayer(uint64_t id)
{
    m_players.erase(id);
}

SdlMixerPlayer* MixerDevice::find(uint64_t id)
{
    auto it = m_players.find(id);
    return it == m_players.end() ? nullptr : it->second;
}

int MixerDevice::takeChannel(uint64_t id)
{
    (void)id;
    size_t channel = 0;
    {
        std::lock_guard lock(m_mutex);
        while (channel < m_taken.size() && m_taken[channel])
            ++channel;
        if (channel < m_taken.size()) {
            m_taken[channel] = true;
            return static_cast<int>(channel);
        }
    }
    // NOTE: Mix_AllocateChannels takes the audio lock, under which the audio thread may be waiting
    // for m_mutex in channelFinished; so it is called with m_mutex released.
    const size_t wanted = std::max<size_t>(16, m_taken.size() * 2);
    if (wanted > 4096)
        return -1;
    const int got = Mix_AllocateChannels(static_cast<int>(wanted));
    if (got <= static_cast<int>(channel))
        return -1;
    std::lock_guard lock(m_mutex);
    m_taken.resize(static_cast<size_t>(got), false);
    m_channels.resize(static_cast<size_t>(got));
    m_taken[channel] = true;
    return static_cast<int>(channel);
}

void MixerDevice::releaseChannel(int channel)
{
    std::lock_guard lock(m_mutex);
    if (channel >= 0 && static_cast<size_t>(channel) < m_taken.size()) {
        m_taken[static_cast<size_t>(channel)] = false;
        m_channels[static_cast<size_t>(channel)] = {};
    }
}

void MixerDevice::startingOnChannel(int channel, uint64_t id, uint64_t serial)
{
    std::lock_guard lock(m_mutex);
    if (channel >= 0 && static_cast<size_t>(channel) < m_channels.size())
        m_channels[static_cast<size_t>(channel)] = { id, serial };
}

void MixerDevice::startingMusic(uint64_t id, uint64_t serial)
{
    std::lock_guard lock(m_mutex);
    m_music = { id, serial };
}

bool MixerDevice::playsMusic(uint64_t id, uint64_t serial)
{
    std::lock_guard lock(m_mutex);
    return m_music.id == id && m_music.serial == serial;
}

void MixerDevice::channelFinished(int channel)
{
    Play play;
    {
        std::lock_guard lock(m_mutex);
        if (channel < 0 || static_cast<size_t>(channel) >= m_channels.size())
            return;
        play = m_channels[static_cast<size_t>(channel)];
    }
    if (play.id != 0)
        postEnd(play);
}

void MixerDevice::musicFinished()
{
    Play play;
    {
        std::lock_guard lock(m_mutex);
        play = m_music;
    }
    if (play.id != 0)
        postEnd(play);
}

void MixerDevice::postEnd(Play play)
{
    m_loop.postTask([device = weak_from_this(), play] {
        if (auto self = device.lock()) {
            if (SdlMixerPlayer* player = self->find(play.id))
                player->endedOnDevice(play.serial);
        }
    });
}

void MixerDevice::postChange(uint64_t id, int oldState, int newState)
{
    m_loop.postTask([device = weak_from_this(), id, oldState, newState] {
        if (auto self = device.lock()) {
            if (SdlMixerPlayer* player = self->find(id))
                player->raise(oldState, newState);
        }
    });
}

} // namespace ombrel::platform::sdl
