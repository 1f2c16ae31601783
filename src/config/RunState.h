// RunState: the run-time values that several parts of the cabinet share (where the browser stands,
// the saver's countdown, the skin's layout choices). Plain values, owned by the application.
#pragma once

#include "config/SkinValues.h"

#include <string>

namespace ombrel::config {

struct RunState
{
    // Start-up.
    bool resDone = false; // the display mode has been dealt with
    float deskW = 0; // the screen's size in pixels as found at start
    float deskH = 0;

    // Where the browser stands.
    int curPath = 1; // the current list, 1 to 27 (0 when no saved state was found)
    int gi = 0; // running row number of the list loops
    bool fileFound = false; // result of the last existence test
    std::string scanDir; // folder of the last existence tests
    std::string extraPath; // full name of extra.lst
    std::string curPic; // the picture last shown in a panel or clicked

    // The launch in progress, kept after it: the program's argument (a ROM or table name, possibly with
    // its folder, or the S11 emulator's game number) and the program's bare file name, which also picks
    // the keys pressed into it.
    std::string runRom;
    std::string runExe;

    // Saver countdown.
    bool saverAuto = true; // the saver form opens as the saver (else as a full view of one picture)
    double saverCount = 0;

    // Skin layout (set from the skin's file).
    int midRow = 0; // index of the middle row of the strip; also the page step
    std::string listType; // "list" or "" for the text strip, else the picture strip's kind
    bool showLogo = false;
    SkinValues skin; // the rest of skin.ini
    std::string themesDir; // the skins' folder: the program's folder and "omthemes"
};

} // namespace ombrel::config
