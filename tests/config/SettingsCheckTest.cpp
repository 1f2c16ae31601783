// Tests of the `ombrel --check` report: a sound cabinet, and one broken file for each kind of warning.
#include "config/SettingsCheck.h"

#include "IniSample.h"
#include "TempHome.h"
#include "platform/Files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

namespace ombrel::config {
namespace {

using test::IniSample;
using test::TempHome;

// One working path: its ROM and picture folders and its emulator all exist below the program folder.
IniSample soundCabinet(const TempHome& home)
{
    std::filesystem::create_directories(home.root() / "roms/mame");
    std::filesystem::create_directories(home.root() / "art");
    home.write("emu/demoemu", "#!/bin/sh\n");
    IniSample ini;
    ini.setBlock(1, 1, "roms\\mame\\").setBlock(1, 2, "demoemu").setBlock(1, 4, "Arcade");
    ini.setBlock(1, 7, "emu\\").setBlock(1, 8, "art\\");
    return ini;
}

SettingsCheck check(const TempHome& home, const std::string& searchPath = "")
{
    platform::DiskFiles files;
    return checkSettings(home.path(), files, searchPath);
}

TEST(SettingsCheck, SoundFileListsEveryValueAndPasses)
{
    TempHome home;
    IniSample ini = soundCabinet(home);
    ini.insertBefore(IniSample::tailIndex(1), "* the fixed emulators");
    ini.writeTo(home);
    SettingsCheck result = check(home);
    EXPECT_TRUE(result.ok) << result.text;
    EXPECT_NE(result.text.find("no problems found"), std::string::npos);
    EXPECT_NE(
        result.text.find("line 1    Roms=            romDir(1)       \"roms\\mame\\\""), std::string::npos)
        << result.text;
    EXPECT_NE(result.text.find("line 162  MameRoot="), std::string::npos) << "the comment is passed over";
}

TEST(SettingsCheck, WarnsAboutEachKindOfFault)
{
    // A change to the sound file (nullptr: no file at all) and what the check finds.
    using Row = std::pair<std::function<void(IniSample&)>, const char*>;
    const Row rows[] = {
        { [](IniSample& ini) { ini.insertBefore(IniSample::blockIndex(1, 2), "* emulator"); },
            "warning: line 2: a comment stands where Exec= (emuExe(1)) is read" },
        { [](IniSample& ini) { ini.setBlock(1, 5, "-a,-b"); },
            "warning: line 5: a comma ends the value here" },
        { [](IniSample& ini) { ini.insertBefore(IniSample::tailIndex(1), "* one, two"); },
            "warning: line 161: a comma ends the value here" },
        { // a quoted value that runs on to the next line, swallowing it
            [](IniSample& ini) {
                ini.lines[IniSample::blockIndex(1, 5)] = "\"Opts=-a";
                ini.lines[IniSample::blockIndex(1, 6)] = "Images=x\"";
            },
            "warning: line 5: Opts= (emuOpts(1)) \"-a<CR><LF>Images=x\" runs on past its line" },
        { [](IniSample& ini) { ini.setBlock(1, 8, "art"); },
            "warning: line 8: artDir(1) \"art\" lacks its trailing '\\' or '/'" },
        { [](IniSample& ini) { ini.setBlock(2, 1, "roms\\gone\\"); },
            "warning: line 9: romDir(2) \"roms\\gone\\\" is not a folder that exists" },
        { [](IniSample& ini) { ini.setTail(7, "C:\\VPinball\\"); },
            "warning: line 167: vpDir \"C:\\VPinball\\\" is not a folder that exists" },
        { [](IniSample& ini) { ini.setBlock(1, 2, "other.exe"); },
            "warning: line 2: path 1 starts \"emu\\other.exe\", which cannot be found" },
        { [](IniSample& ini) { ini.truncate(100); },
            "error: ombrel.ini line 101: the file ends where Opts= of path 13 should stand" },
        { nullptr, "error: ombrel.ini: cannot open" },
    };
    for (const auto& [edit, finding] : rows) {
        TempHome home;
        IniSample ini = soundCabinet(home);
        if (edit) {
            edit(ini);
            ini.writeTo(home);
        }
        SettingsCheck result = check(home);
        EXPECT_FALSE(result.ok);
        EXPECT_NE(result.text.find(finding), std::string::npos) << result.text;
    }
}

// Programs are found the way they are started: from the program's folder, "x.exe" as "x", a bare name
// also on the search path.
TEST(SettingsCheck, FindsProgramsTheWayTheyAreStarted)
{
    struct Row
    {
        const char* name;
        const char* emuDir; // "~/" stands for the program folder written as an absolute path
        const char* emuExe;
        const char* file; // created below the program folder
        bool found;
    };
    const Row rows[] = {
        { "x.exe as x", "emu\\", "run.exe", "emu/run", true },
        { "absolute folder", "~/games/", "mame", "games/mame", true },
        { "bare name in the program folder", "", "tool", "tool", true },
        { "bare name on the search path", "", "tool", "bin/tool", true },
        { "name with a folder is not looked for on the search path", "sub\\", "tool", "bin/tool", false },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TempHome home;
        std::filesystem::create_directories(home.root() / "roms");
        home.write(row.file, "");
        std::string emuDir = row.emuDir;
        if (emuDir.starts_with("~/"))
            emuDir = home.path() + emuDir.substr(2);
        IniSample ini;
        ini.setBlock(1, 1, "roms\\").setBlock(1, 2, row.emuExe).setBlock(1, 7, emuDir);
        ini.writeTo(home);
        SettingsCheck result = check(home, "/nonexistent::" + home.path() + "bin");
        // EmuFolder= may name a folder that is not there: only the program counts here.
        bool programMissing = result.text.find("cannot be found") != std::string::npos;
        EXPECT_EQ(!programMissing, row.found) << result.text;
    }
}

} // namespace
} // namespace ombrel::config
