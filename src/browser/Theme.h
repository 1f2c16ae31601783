// Theme: the skin's colour scheme and font, which every form takes its look from, and SetTheme, which
// puts them on the browser and plays the skin's greeting.
#pragma once

#include "browser/ListStrip.h"
#include "browser/MainControls.h"
#include "browser/Scheme.h"
#include "config/RunState.h"
#include "config/SavedState.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace ombrel::core {
class FailureLog;
class FieldReader;
}
namespace ombrel::platform {
class Files;
class Fonts;
class MediaPlayer;
}
namespace ombrel::runtime {
class Timer;
}

namespace ombrel::browser {

inline constexpr const char* kSchemeFileName = "scheme.cfg";

// Where each value of the last read came from: the 1-based line of the file, 0 for a value the read
// did not reach. stop says why the read ended early; empty when all five were taken.
struct SchemeRead
{
    std::array<int, 5> lines {};
    std::string stop;
};

// The names of the five values in file order, for messages and reports.
inline constexpr std::array<const char*, 5> kSchemeNames { "schemeFont", "schemeSize", "schemeBack",
    "schemeList", "schemeFore" };

// Reads the record over the file's bytes into scheme, value by value: the font as a field, the size
// as a number, the colours as whole numbers. A value that is missing or not of its kind ends the
// read there; the values before it stand and the ones after it keep what they held.
SchemeRead readScheme(core::FieldReader& file, Scheme& scheme);

// What ombrel --check says of a skin's scheme: one line per value with the line it came from, and the
// font file the font name resolves to. bytes is the file's content, or nullopt when it is missing.
std::vector<std::string> schemeReport(const std::optional<std::string>& bytes, platform::Fonts& fonts);

// What SetTheme works on: the browser's controls, the shared state it reads and the scheme it fills.
struct ThemeContext
{
    MainControls& c;
    config::RunState& run; // themesDir, listType, midRow
    StripLayout& strip;
    const config::SavedState& saved; // curSkin, fontSize, muted
    platform::Files& files;
    Scheme& scheme;
    core::FailureLog& failures;
};

// Reads the current skin's scheme.cfg (the user's font size above 0 wins over the scheme's) and puts
// the font and colours on the path caption, the navigation labels, the preview frames and the rows
// of the text strip, which it lays out again. A picture strip's rows are hidden and left alone.
void setScheme(const ThemeContext& ctx);

// setScheme, then the skin's "start.mp3" on the effects player, or, with the sound off, a stop of
// whatever it is playing. timfx is disabled first so a pending end of the program does not cut in.
void SetTheme(const ThemeContext& ctx, platform::MediaPlayer& mpFX, runtime::Timer& timfx);

} // namespace ombrel::browser
