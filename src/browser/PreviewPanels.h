// PreviewPanels: the four pictures of the selected game and the selection's sound.
#pragma once

#include "config/RunState.h"
#include "config/SavedState.h"
#include "platform/Files.h"
#include "platform/MediaPlayer.h"

#include <cstdint>
#include <optional>
#include <string>

namespace ombrel::browser {

struct MainControls;

// What cabRefresh reads besides the browser's controls.
struct PreviewContext
{
    platform::MediaPlayer& mpFX; // the browser's sound effects
    platform::Files& files;
    const config::SavedState& saved; // muted, curSkin
    const config::RunState& run; // themesDir
    std::optional<int16_t> keyExit; // empty until the key map has been read
};

// A file of the current skin (themesDir + curSkin + name) as a player opens it: '\' read as '/', and
// found whatever the case of its letters. A file that is not there keeps the name as written.
std::string skinFile(platform::Files& files, const config::RunState& run, const config::SavedState& saved,
    const std::string& name);

// Shows the selected game's pictures and clicks: "pop.mp3" of the skin, unless the sound is off, no
// key map has been read, or a sound is playing already (a starting game's or the goodbye sound is
// never cut off).
void cabRefresh(MainControls& c, const PreviewContext& ctx);

} // namespace ombrel::browser
