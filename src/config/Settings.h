// Settings: the cabinet owner's values from ombrel.ini, held for the life of the program.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace ombrel::config {

// Game lists: 1 to 20 are the owner's paths, 21 to 26 the fixed emulators, 27 the Extras list.
constexpr int kUserPaths = 20;
constexpr int kImpactPath = 21;
constexpr int kModelerPath = 22;
constexpr int kU64Path = 23;
constexpr int kVpPath = 24;
constexpr int kS11Path = 25;
constexpr int kDaphnePath = 26;
constexpr int kExtrasPath = 27;

// Every value of ombrel.ini. The per-path arrays are indexed by the list's number; index 0 stays empty.
// Text is kept as the file's bytes. Folder values carry their trailing separator ('\' or '/') and are
// joined to what follows by plain concatenation; '\' becomes '/' only where a file is opened.
struct Settings
{
    std::array<std::string, kUserPaths + 1> romDir {}; // empty: the path is switched off
    std::array<std::string, kUserPaths + 1> emuExe {};
    std::array<bool, kUserPaths + 1> fullPath {}; // the emulator gets romDir + ROM name
    std::array<std::string, kUserPaths + 1> pathName {};
    std::array<std::string, kUserPaths + 1> emuOpts {}; // kept with its blanks
    std::array<std::string, kExtrasPath + 1> logoFile {};
    std::array<std::string, kUserPaths + 1> emuDir {}; // also the working folder of the emulator
    std::array<std::string, kDaphnePath + 1> artDir {}; // holds the folders marquees, snap, flyers, cabinets

    std::string mameDir;
    std::string impactDir;
    bool impactNT = false;
    std::string modelerDir;
    std::string u64Dir;
    std::string u64Dir2;
    std::string vpDir;
    std::string s11Dir;
    bool s11NewPlugins = false;
    std::string s11Opts;
    std::string daphneDir;
    std::string daphneOpts;
    int16_t scrollRate = 0; // repeat interval in ms, used when above 15
    int16_t scrollRate2 = 0; // read and kept; nothing uses it
    bool tvOut = false;
    float scrW = 0; // 0: the desktop's size
    float scrH = 0;
    float deskFreq = 0;
    float deskBits = 0;
    float frontFreq = 0;
    float frontBits = 0;
    bool powerOff = false;

    bool operator==(const Settings&) const = default;
};

} // namespace ombrel::config
