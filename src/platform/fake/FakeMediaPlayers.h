// FakeMediaPlayers: makes FakeMediaPlayers that share one loop, trace and way of finding a file's length.
#pragma once

#include "platform/MediaPlayer.h"
#include "platform/fake/FakeMediaPlayer.h"

#include <string>

namespace ombrel::platform::fake {

class FakeMediaPlayers final : public MediaPlayers {
public:
    FakeMediaPlayers(runtime::EventLoop& loop, runtime::Trace& trace, DurationOf durationOf, std::string home = {});
    std::unique_ptr<MediaPlayer> create(const std::string& name, MediaKind kind) override;

private:
    runtime::EventLoop& m_loop;
    runtime::Trace& m_trace;
    DurationOf m_durationOf;
    std::string m_home;
};

} // namespace ombrel::platform::fake
