// MixerDevice: the open SDL_mixer device as its players share it: channels, the one music, and the
// road by which the end of a sound comes back from the audio thread to the loop.
#pragma once

#include "runtime/EventLoop.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace ombrel::platform::sdl {

class SdlMixerPlayer;

// Every player gets an id and a channel of its own; each start of a sound gets a serial number, so
// the end of an earlier start, reported late, is told apart from the end of the current one. Play
// state changes reach the players as tasks on the loop, never from inside the call that made them.
class MixerDevice : public std::enable_shared_from_this<MixerDevice>
{
public:
    explicit MixerDevice(runtime::EventLoop& loop);

    // The loop's thread.
    uint64_t addPlayer(SdlMixerPlayer* player);
    void removePlayer(uint64_t id);
    int takeChannel(uint64_t id); // -1 when SDL_mixer has no channel to give
    void releaseChannel(int channel);
    // Records who plays before the sound starts, since a short one can end before Mix_Play returns.
    void startingOnChannel(int channel, uint64_t id, uint64_t serial);
    void startingMusic(uint64_t id, uint64_t serial);
    bool playsMusic(uint64_t id, uint64_t serial);
    // Hands a change of play state to the player on a later turn of the loop.
    void postChange(uint64_t id, int oldState, int newState);
    bool isOpen() const { return m_open; }
    void close() { m_open = false; }

    // SDL_mixer's audio thread (or a halting call on the loop's thread).
    void channelFinished(int channel);
    void musicFinished();

private:
    struct Play
    {
        uint64_t id = 0;
        uint64_t serial = 0;
    };
    void postEnd(Play play);
    SdlMixerPlayer* find(uint64_t id);

    runtime::EventLoop& m_loop;
    std::mutex m_mutex; // guards what the audio thread reads: m_channels and m_music
    std::unordered_map<uint64_t, SdlMixerPlayer*> m_players;
    std::vector<Play> m_channels; // by channel number; id 0 is a free channel
    std::vector<bool> m_taken;
    Play m_music;
    uint64_t m_nextId = 1;
    bool m_open = true;
};

} // namespace ombrel::platform::sdl
