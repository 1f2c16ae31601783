// FakeMediaPlayer: play states and their timing without sound.
#include "platform/fake/FakeMediaPlayer.h"

#include "platform/fake/HomeRelative.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace ombrel::platform::fake {

namespace {

// A play lasts at least 1 ms: a timer of 0 ms would never tick.
int64_t lengthMs(double seconds)
{
    if (!std::isfinite(seconds) || seconds <= 0)
        return 1;
    const double ms = std::round(seconds * 1000.0);
    return ms >= double(INT_MAX) ? INT_MAX : std::max<int64_t>(1, int64_t(ms));
}

} // namespace

FakeMediaPlayer::FakeMediaPlayer(std::string name, runtime::EventLoop& loop, runtime::Trace& trace,
                                 DurationOf durationOf, std::string home)
    : m_name(std::move(name))
    , m_loop(loop)
    , m_trace(trace)
    , m_durationOf(std::move(durationOf))
    , m_home(std::move(home))
    , m_endTimer(loop, m_name + ".end", 0, false, [this] { reachedEnd(); })
{
}

FakeMediaPlayer::~FakeMediaPlayer() = default;

void FakeMediaPlayer::trace(const std::string& what) { m_trace.effect("media " + m_name + " " + what); }

void FakeMediaPlayer::setFileName(const std::string& path)
{
    const bool wasOpen = !m_file.empty();
    m_endTimer.setEnabled(false);
    m_remainingMs = 0;
    m_state = kStopped; // no change event: see the class comment
    m_file.clear();
    m_duration = 0;
    if (path.empty()) {
        if (wasOpen)
            trace("close");
        return;
    }
    const double seconds = m_durationOf ? m_durationOf(path) : -1.0;
    if (!(seconds >= 0)) {
        trace("open " + homeRelative(path, m_home) + " failed");
        return;
    }
    m_file = path;
    m_duration = seconds;
    trace("open " + homeRelative(path, m_home));
}

void FakeMediaPlayer::play()
{
    if (m_file.empty() || m_state == kPlaying)
        return;
    const int64_t ms = m_remainingMs > 0 ? m_remainingMs : lengthMs(m_duration);
    m_remainingMs = 0;
    m_endTimer.setInterval(int(std::min<int64_t>(ms, INT_MAX)));
    m_endTimer.setEnabled(true);
    trace("play");
    changeState(kPlaying);
}

void FakeMediaPlayer::pause()
{
    if (m_state != kPlaying)
        return;
    const auto due = m_endTimer.due();
    m_remainingMs = due ? std::max<int64_t>(1, *due - m_loop.now()) : 1;
    m_endTimer.setEnabled(false);
    trace("pause");
    changeState(kPaused);
}

void FakeMediaPlayer::stop()
{
    if (m_state == kStopped)
        return;
    m_endTimer.setEnabled(false);
    m_remainingMs = 0;
    trace("stop");
    changeState(kStopped);
}

void FakeMediaPlayer::reachedEnd()
{
    m_endTimer.setEnabled(false);
    if (m_state != kPlaying)
        return;
    trace("end");
    changeState(kStopped);
}

void FakeMediaPlayer::setVolume(int hundredthsDb)
{
    const int volume = std::clamp(hundredthsDb, -10000, 0);
    if (volume == m_volume)
        return;
    m_volume = volume;
    trace("volume " + std::to_string(volume));
}

void FakeMediaPlayer::changeState(int state)
{
    const int old = m_state;
    m_state = state;
    m_loop.postTask([alive = std::weak_ptr<bool>(m_alive), this, old, state] {
        if (alive.expired() || !onPlayStateChange)
            return;
        onPlayStateChange(old, state);
    });
}

} // namespace ombrel::platform::fake
