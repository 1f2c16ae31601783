// SavedState: what the cabinet remembers from one run to the next (ombrel.cfg), its reader and writer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ombrel::core {
class FieldReader;
}

namespace ombrel::platform {
class Files;
}

namespace ombrel::config {

// The nine values of ombrel.cfg, one a line, in this order.
struct SavedState
{
    std::string curSkin; // the skin's folder below omthemes, "\Ombrel\"
    double saverDelay = 0; // seconds without input before the saver; -1 never
    float songMode = 0; // -1 shuffles the jukebox
    float songVolume = 0;
    float curSong = 0; // position in the song list, from 1
    bool muted = false;
    std::optional<int16_t> lastIndex; // selection at the save, -1 for none; empty until read
    std::optional<int16_t> lastPath; // list number at the save; empty until read
    int16_t fontSize = 0; // 0 keeps the colour scheme's size

    bool operator==(const SavedState&) const = default;
};

inline constexpr const char* kSavedStateFileName = "ombrel.cfg";

// Reads the file into state. The saver delay goes into saverCount first, the running countdown, and is
// copied to state.saverDelay only once the whole file has been read. Stops at the first value that is
// missing or of the wrong kind: what was read before it stands, the rest keep what they held. Returns an
// empty string, or a message saying why the reading stopped.
std::string openCfg(const std::string& path, SavedState& state, double& saverCount);

// The same on a file already opened, from the reader's place.
std::string readCfg(core::FieldReader& file, SavedState& state, double& saverCount);

// The file's text: a quoted string, then numbers in their shortest plain form and #TRUE#/#FALSE#, each
// line ended by CR LF. An empty lastIndex or lastPath is written as 0.
std::string formatCfg(const SavedState& state);

// Replaces the file as a whole with formatCfg(state). The caller first stores the selection and the
// current path in lastIndex and lastPath. Returns an empty string, or why the file could not be written
// (the old file is then untouched).
std::string saveCfg(platform::Files& files, const std::string& path, const SavedState& state);

} // namespace ombrel::config
