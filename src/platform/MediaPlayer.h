// MediaPlayer: the media control of the system: film, sound effects, songs. One player plays one file
// at a time. Play states are 0 stopped, 1 paused, 2 playing; volume is in hundredths of a decibel,
// 0 loudest, -10000 silent. A change of play state is reported on the loop's thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace ombrel::platform {

enum PlayState { kStopped = 0, kPaused = 1, kPlaying = 2 };

class MediaPlayer {
public:
    virtual ~MediaPlayer() = default;
    // Opens the file; when it cannot be opened, fileName() reads back empty. An empty name closes.
    virtual void setFileName(const std::string& path) = 0;
    virtual std::string fileName() const = 0;
    virtual void play() = 0;
    virtual void stop() = 0;
    virtual void pause() = 0;
    virtual int playState() const = 0;
    virtual void setVolume(int hundredthsDb) = 0;
    virtual int volume() const = 0;
    // Length of the open file in seconds, 0 when unknown or nothing is open.
    virtual double duration() const = 0;

    // Raised on the loop's thread when the play state changes: (old state, new state).
    std::function<void(int, int)> onPlayStateChange;
};

// What a player is for: a short effect (plays beside a song), a song (one at a time), or a film
// (full screen, with its sound).
enum class MediaKind { Effect, Song, Film };

// Makes players. The name is the control's ("mpFX", "mpIntro"), used in trace lines.
class MediaPlayers {
public:
    virtual ~MediaPlayers() = default;
    virtual std::unique_ptr<MediaPlayer> create(const std::string& name, MediaKind kind) = 0;
};

} // namespace ombrel::platform
