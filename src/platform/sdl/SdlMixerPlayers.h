// SdlMixerPlayers: opens the sound device and makes SDL_mixer players, or silent ones without sound.
#pragma once

#include "platform/MediaPlayer.h"
#include "platform/sdl/MixerDevice.h"
#include "platform/sdl/SdlHandles.h"
#include "runtime/EventLoop.h"
#include "runtime/Trace.h"

#include <functional>
#include <memory>
#include <string>

namespace ombrel::platform::sdl {

// The players of a real run. When the sound device cannot be opened, one line on standard error
// says so and every player is a silent one that still reports play states over the files' lengths,
// so the program behaves the same without sound. Players must not outlive their maker.
class SdlMixerPlayers final : public MediaPlayers
{
public:
    // home: the program's folder, which trace lines leave out of paths.
    SdlMixerPlayers(runtime::EventLoop& loop, runtime::Trace& trace, std::string home = {});
    ~SdlMixerPlayers() override;
    SdlMixerPlayers(const SdlMixerPlayers&) = delete;
    SdlMixerPlayers& operator=(const SdlMixerPlayers&) = delete;

    std::unique_ptr<MediaPlayer> create(const std::string& name, MediaKind kind) override;

    bool hasSound() const { return m_device != nullptr; }

    // Makes the players of films. Until one is set, a film plays its sound only, and only when
    // SDL_mixer can read it.
    std::function<std::unique_ptr<MediaPlayer>(const std::string& name)> filmFactory;

private:
    runtime::EventLoop& m_loop;
    runtime::Trace& m_trace;
    std::string m_home;
    std::unique_ptr<SdlSubsystems> m_audio;
    std::shared_ptr<MixerDevice> m_device; // null: no sound
};

} // namespace ombrel::platform::sdl
