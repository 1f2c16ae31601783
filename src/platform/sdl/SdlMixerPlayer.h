// SdlMixerPlayer: one media player on SDL_mixer: an effect on a channel of its own, or the music.
#pragma once

#include "platform/MediaPlayer.h"
#include "platform/sdl/MixerDevice.h"
#include "platform/sdl/SdlHandles.h"
#include "runtime/Trace.h"

#include <memory>
#include <string>

namespace ombrel::platform::sdl {

// SDL_mixer's volume (0..128) for a volume in hundredths of a decibel (0 loudest, -10000 silent).
int mixerVolume(int hundredthsDb);

// Effects (and, for now, films) are decoded whole into a chunk and play on the player's own channel,
// beside everything else. Songs stream as SDL_mixer's one music: starting a song ends the song of any
// other player. Changes of play state are reported on a later turn of the loop, so a handler reads
// the player as its caller left it; opening a file ends the current play without a report, since a
// handler would take a "stopped" of the newly opened file for the end of it. Writes the same trace
// lines as the silent player.
class SdlMixerPlayer final : public MediaPlayer
{
public:
    // kind Film plays like an Effect.
    SdlMixerPlayer(std::string name, MediaKind kind, std::shared_ptr<MixerDevice> device,
        runtime::Trace& trace, std::string home);
    ~SdlMixerPlayer() override;
    SdlMixerPlayer(const SdlMixerPlayer&) = delete;
    SdlMixerPlayer& operator=(const SdlMixerPlayer&) = delete;

    void setFileName(const std::string& path) override;
    std::string fileName() const override { return m_fileName; }
    void play() override;
    void stop() override;
    void pause() override;
    int playState() const override { return m_state; }
    void setVolume(int hundredthsDb) override;
    int volume() const override { return m_volume; }
    double duration() const override { return m_duration; }

    const std::string& name() const { return m_name; }

    // From MixerDevice, on the loop's thread: the sound of start number serial has ended.
    void endedOnDevice(uint64_t serial);
    // From MixerDevice, on the loop's thread: tell the handler of a change.
    void raise(int oldState, int newState);

private:
    bool isSong() const { return m_kind == MediaKind::Song; }
    void halt();
    void setState(int state);
    void trace(const std::string& what);

    std::string m_name;
    MediaKind m_kind;
    std::shared_ptr<MixerDevice> m_device;
    runtime::Trace& m_trace;
    std::string m_home; // paths in trace lines are shown relative to it
    uint64_t m_id = 0;
    int m_channel = -1;
    ChunkPtr m_chunk;
    MusicPtr m_music;
    std::string m_fileName;
    double m_duration = 0;
    int m_state = kStopped;
    int m_volume = 0;
    uint64_t m_serial = 0; // of the current start
};

} // namespace ombrel::platform::sdl
