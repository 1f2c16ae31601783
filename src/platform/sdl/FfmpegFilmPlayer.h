// FfmpegFilmPlayer: plays a film (the intro) with its sound: pictures go to FilmFrames for the painter,
// sound to an SDL audio device of its own. The end of the film comes back as a play-state change on the
// loop's thread.
#pragma once

#include "platform/MediaPlayer.h"
#include "platform/sdl/FilmFrames.h"
#include "runtime/EventLoop.h"
#include "runtime/Trace.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>

namespace ombrel::platform::sdl {

class FfmpegFilmPlayer final : public MediaPlayer {
public:
    FfmpegFilmPlayer(std::string name, runtime::EventLoop& loop, runtime::Trace& trace, std::string home,
        FilmFrames& frames);
    ~FfmpegFilmPlayer() override;
    FfmpegFilmPlayer(const FfmpegFilmPlayer&) = delete;
    FfmpegFilmPlayer& operator=(const FfmpegFilmPlayer&) = delete;

    void setFileName(const std::string& path) override;
    std::string fileName() const override { return m_fileName; }
    void play() override;
    void stop() override;
    void pause() override;
    int playState() const override { return m_state; }
    void setVolume(int hundredthsDb) override { m_volume = hundredthsDb; }
    int volume() const override { return m_volume; }
    double duration() const override { return m_duration; }

private:
    void run(std::string path, uint64_t serial); // the film's thread
    void halt(); // stops the thread and the sound
    void setState(int state);
    void trace(const std::string& what);

    std::string m_name;
    runtime::EventLoop& m_loop;
    runtime::Trace& m_trace;
    std::string m_home;
    FilmFrames& m_frames;
    std::string m_fileName;
    double m_duration = 0;
    int m_state = kStopped;
    int m_volume = 0;
    uint64_t m_serial = 0; // of the current play, so a late end of an earlier one is ignored
    std::atomic<bool> m_stop { false };
    std::thread m_thread;
    uint32_t m_audio = 0; // SDL audio device, 0 when none
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace ombrel::platform::sdl
