// Fuzz target of the reader of ombrel.cfg: any bytes as the saved state.
#include "FuzzHome.h"

#include "config/SavedState.h"
#include "core/FieldReader.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

using namespace ombrel;
using fuzz::fuzzCheck;

namespace {

config::SavedState filledState()
{
    config::SavedState s;
    s.curSkin = "\\Old\\";
    s.saverDelay = 77;
    s.songMode = -1;
    s.songVolume = -500;
    s.curSong = 3;
    s.muted = true;
    s.lastIndex = 12;
    s.lastPath = 4;
    s.fontSize = 9;
    return s;
}

// Reads the file; true when all nine values were taken.
bool read(const std::string& bytes, config::SavedState& state, double& saverCount)
{
    core::FieldReader reader(bytes);
    std::string message = config::readCfg(reader, state, saverCount);
    fuzzCheck(
        std::isfinite(state.saverDelay) && std::isfinite(saverCount), "a saver delay that is no number");
    for (float value : { state.songMode, state.songVolume, state.curSong })
        fuzzCheck(std::isfinite(value), "a jukebox value that is no number");
    return message.empty();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    config::SavedState fresh;
    double count = 0;
    const bool complete = read(bytes, fresh, count);

    config::SavedState reread = filledState();
    double rereadCount = 5;
    fuzzCheck(read(bytes, reread, rereadCount) == complete, "the same file read differently the second time");
    if (!complete) {
        // A stop keeps the saver delay: it is copied from the countdown only at the end of a whole read.
        fuzzCheck(reread.saverDelay == filledState().saverDelay, "a stopped read changed the saver delay");
        return 0;
    }
    fuzzCheck(reread == fresh && rereadCount == count, "a complete read left a value of the earlier one");
    fuzzCheck(fresh.saverDelay == count, "the saver delay is not the countdown read");

    // What the program writes, it reads back the same. A skin name never holds a double quote; one
    // read from a damaged file cannot be written back in quotes.
    if (fresh.curSkin.find('"') != std::string::npos)
        return 0;
    config::SavedState again;
    double againCount = 0;
    fuzzCheck(read(config::formatCfg(fresh), again, againCount), "the written file cannot be read back");
    fuzzCheck(again == fresh, "the written file reads back different values");
    return 0;
}
