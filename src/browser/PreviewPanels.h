// PreviewPanels: the four pictures of the selected game and the selection's sound.
#pragma once

#include "catalogue/Catalogue.h"
#include "catalogue/PictureFolders.h"
#include "config/RunState.h"
#include "config/SavedState.h"
#include "config/Settings.h"
#include "platform/Files.h"
#include "platform/MediaPlayer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ombrel::runtime {
class ListBox;
}

namespace ombrel::browser {

struct MainControls;

// What cabRefresh reads besides the browser's controls, and the run's values it writes (scanDir,
// fileFound, curPic).
struct PreviewContext
{
    platform::MediaPlayer& mpFX; // the browser's sound effects
    platform::Files& files;
    const config::SavedState& saved; // muted, curSkin
    config::RunState& run; // themesDir, curPath, the skin's flags; scanDir, fileFound, curPic
    std::optional<int16_t> keyExit; // empty until the key map has been read
    const config::Settings& settings; // the lists' picture folders
    const catalogue::Catalogue& catalogue;
    uint32_t schemeBack; // the colour around a picture that does not fill its panel
    const std::string& home; // the program's folder, with a trailing '/'
};

// A file of the current skin (themesDir + curSkin + name) as a player opens it: '\' read as '/', and
// found whatever the case of its letters. A file that is not there keeps the name as written.
std::string skinFile(platform::Files& files, const config::RunState& run, const config::SavedState& saved,
    const std::string& name);

// The name of catalogue row `row` of list `path` (column 1: a ROM or table name, for the Extras a
// program's file name). Row 0 is empty. Throws std::out_of_range for a list outside 1 to 27 or a row
// outside the catalogue, where a panel has nothing to test or load.
const std::string& gameName(const catalogue::Catalogue& catalogue, int path, int row);

// Whether a panel of this kind trims blanks from the folder and name before it loads the picture. The
// marquee and snap panels do; the flyer and cabinet panels and the existence test take the path as it is,
// so for a name with a trailing blank the marquee and snap panels load another file than the one found.
bool trimsBlanks(const catalogue::PictureKind& kind);

// The picture file of a game in the folder `scanDir` (a base folder and a kind's folder): scanDir + name +
// ".png". The Extras (list 27) hold program file names, whose three-letter extension gives way to ".png":
// "pinball.exe" looks for "pinball.png". trim: blanks cut off both ends of scanDir + name first. A
// relative folder lies below the program's folder `home`, as every folder of the settings does.
// The panels, the existence test and whoever wants to know a row's pictures ahead all use this. Throws
// std::out_of_range for an Extras name too short to lose its extension.
std::string pictureFile(
    std::string_view home, std::string_view scanDir, std::string_view name, int path, bool trim);

// The picture a cell of the picture strip shows: scanDir + name + ".png", the name as the list has it (a
// program of the Extras keeps its extension before ".png"), nothing trimmed; a relative folder lies below
// the program's folder `home`.
std::string cellPictureFile(std::string_view home, std::string_view scanDir, std::string_view name);

// The existence test of the selected game's picture in run.scanDir: sets run.fileFound for lists 1 to 27
// and leaves it as it was for any other list. Throws for a row outside the catalogue.
void ShowFileSystemType(platform::Files& files, const std::string& home,
    const catalogue::Catalogue& catalogue, config::RunState& run, const runtime::ListBox& List1);

// Brings the preview panels into line with the selection and clicks: "pop.mp3" of the skin, unless the
// sound is off, no key map has been read, or a sound is playing already (a starting game's or the
// goodbye sound is never cut off).
//
// Each kind in turn (marquee, snap, flyer, cabinet): a panel whose game has the picture loads it and is
// shown, unless its skin flag is off (it then loads it hidden); a shown panel without a picture gets the
// skin's default picture and is hidden. curPic follows every load, so the last kind with a picture wins.
// Every step that fails is written to the form's log and passed over; the next one runs.
void cabRefresh(MainControls& c, const PreviewContext& ctx);

} // namespace ombrel::browser
