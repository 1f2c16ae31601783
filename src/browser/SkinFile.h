// SkinFile: reading a skin's skin.ini into the run state, value by value, with the line each came from.
#pragma once

#include "config/RunState.h"
#include "core/FieldReader.h"

#include <string>
#include <vector>

namespace ombrel::platform {
class Files;
}

namespace ombrel::browser {

inline constexpr const char* kSkinFileName = "skin.ini";

// One value of the file as it was read.
struct SkinValueRead
{
    const char* name; // "xScreen.Top", "showSnap", as the program knows it
    int layoutLine; // the line of skin.ini where the value belongs
    int fileLine; // the line it came from; they differ when a comma or a missing line shifts the values
    std::string text; // the value as taken
};

// What a reading of skin.ini took, and why it stopped if it did.
struct SkinRead
{
    std::vector<SkinValueRead> values; // in the file's order
    std::vector<const char*> unread; // names of the values the file did not give
    std::string failure; // empty when every value was read
};

// Reads the 41 values of the file in their order (a value ends at a comma or a line end alike; values
// after line 20 are not read) into run.skin, run.listType and run.showLogo. The first value that is
// missing or not of its kind ends the reading: that value and all after it keep what they held. file
// is nullptr when there is no file to read; nothing changes then.
//
// Numbers may have a decimal point; the strip's columns, gap and alignment are whole numbers, rounded
// half to even. A flag is #TRUE# or #FALSE# in any case, or a number (true unless 0), as in the saved
// state; any other word ("True", "yes") is not a flag and ends the reading like any value of the
// wrong kind. The list kind is taken as written.
SkinRead readSkin(core::FieldReader* file, config::RunState& run);
// The same over a file's bytes.
SkinRead readSkin(std::string bytes, config::RunState& run);

// Reads the skin in skinFolder (which ends with a separator) as a first load would, and says, one line
// each, what every value of its skin.ini is and which line it came from, or why it was not read.
std::vector<std::string> skinReport(platform::Files& files, const std::string& skinFolder);

} // namespace ombrel::browser
