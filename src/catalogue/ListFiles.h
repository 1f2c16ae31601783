// ListFiles: the list files in the program's folder (gamelist.lst, one file per path, extra.lst) and
// how they are read into the catalogue.
#pragma once

#include "catalogue/Catalogue.h"
#include "config/RunState.h"
#include "config/Settings.h"
#include "platform/Files.h"

#include <string>

namespace ombrel::catalogue {

// What the list readers work on. The references outlive the context; home is the program's folder
// with a trailing '/'.
struct CatalogueContext
{
    const config::Settings& settings;
    config::RunState& run;
    Catalogue& catalogue;
    platform::Files& files;
    std::string home;
};

inline constexpr const char* kGameListFile = "gamelist.lst";
inline constexpr const char* kExtrasFile = "extra.lst";

// The file of list n in the program's folder: "l 7.lst" for the owner's paths (with a blank),
// "l21.lst" to "l26.lst" for the fixed emulators, "extra.lst" for 27; "" outside 1 to 27.
std::string listFileName(int path);

// Whether the settings switch list n on: a ROM folder for the owner's paths, the emulator's folder for
// the fixed ones (either of the two Ultra 64 folders). The Extras list depends on its file, not on the
// settings, so 27 (and anything outside 1 to 26) gives false here.
bool isPathActive(const config::Settings& settings, int path);

// Reads the master list into gameList, two fields a game, up to its 5000 rows. Rows already there
// stay unless a line overwrites them. False when gamelist.lst cannot be read at all.
bool readGameList(const CatalogueContext& ctx);

// Reads the file dirdb (relative to the program's folder) into the table of run.curPath: two fields a
// game for an active list 1 to 26, up to 4000 rows; for 27 the Extras records. A missing file is
// created empty, so that a first run ends up with every list file present. Returns an empty string, or
// why the file could not be created or read, or where its reading stopped short.
std::string makeArrays(const CatalogueContext& ctx, const std::string& dirdb);

// Reads the records of extra.lst into extras, up to 4000. Returns an empty string, or why the reading
// failed or stopped short.
std::string InputExtras(const CatalogueContext& ctx);

// Sets run.fileFound to whether the file exists (the case of its letters does not matter).
void CheckForExtras(const CatalogueContext& ctx, const std::string& path);

} // namespace ombrel::catalogue
