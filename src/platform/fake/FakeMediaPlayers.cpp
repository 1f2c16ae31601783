// FakeMediaPlayers: every kind of player is the same fake; only the real backend tells them apart.
#include "platform/fake/FakeMediaPlayers.h"

namespace ombrel::platform::fake {

FakeMediaPlayers::FakeMediaPlayers(runtime::EventLoop& loop, runtime::Trace& trace, DurationOf durationOf,
                                   std::string home)
    : m_loop(loop)
    , m_trace(trace)
    , m_durationOf(std::move(durationOf))
    , m_home(std::move(home))
{
}

std::unique_ptr<MediaPlayer> FakeMediaPlayers::create(const std::string& name, MediaKind kind)
{
    (void)kind;
    return std::make_unique<FakeMediaPlayer>(name, m_loop, m_trace, m_durationOf, m_home);
}

} // namespace ombrel::platform::fake
