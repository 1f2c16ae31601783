// FakeMediaPlayer: a media player that plays nothing but keeps time: a play ends when the file's length
// has passed on the loop's clock, as a real one would.
#pragma once

#include "platform/MediaPlayer.h"
#include "runtime/EventLoop.h"
#include "runtime/Timer.h"
#include "runtime/Trace.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace ombrel::platform::fake {

// Length of a media file in seconds; below 0 when the file cannot be opened.
using DurationOf = std::function<double(const std::string& path)>;

// Trace lines: "media <name> open <file>" (or "... open <file> failed"), "media <name> close",
// "play", "pause", "stop" (each only when it changes something), "end" when a play runs out, and
// "volume <v>" when the volume changes.
//
// NOTE: play-state changes are posted to the loop, as a real backend's audio thread would report them,
// so a handler never runs inside play() or stop(). Opening another file cuts the current play off
// without a change event: the system reads "stopped" events of the newly opened file as the end of it.
class FakeMediaPlayer final : public MediaPlayer {
public:
    FakeMediaPlayer(std::string name, runtime::EventLoop& loop, runtime::Trace& trace, DurationOf durationOf,
                    std::string home = {});
    ~FakeMediaPlayer() override;

    void setFileName(const std::string& path) override;
    std::string fileName() const override { return m_file; }
    void play() override;
    void stop() override;
    void pause() override;
    int playState() const override { return m_state; }
    void setVolume(int hundredthsDb) override;
    int volume() const override { return m_volume; }
    double duration() const override { return m_file.empty() ? 0.0 : m_duration; }

private:
    void changeState(int state);
    void reachedEnd();
    void trace(const std::string& what);

    std::string m_name;
    runtime::EventLoop& m_loop;
    runtime::Trace& m_trace;
    DurationOf m_durationOf;
    std::string m_home;
    std::string m_file;
    double m_duration = 0;
    int64_t m_remainingMs = 0; // what is left to play after a pause; 0 plays from the start
    int m_state = kStopped;
    int m_volume = 0;
    runtime::Timer m_endTimer;
    // Lets a posted state change know whether the player still exists when it is delivered.
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace ombrel::platform::fake
