// SettingsCheck: the report of `ombrel --check`, which shows how ombrel.ini is read and what looks wrong.
#pragma once

#include <string>

namespace ombrel::platform {
class Files;
}

namespace ombrel::config {

// The report's text, one line per value and one per finding, and whether the file is sound.
struct SettingsCheck
{
    std::string text;
    bool ok = false; // false when the file cannot be read or any warning was found
};

// Reads <home>ombrel.ini as the program does and lists, for every value, the line it came from, the
// label that belongs there, its name and the value taken. Then it warns about: a comment or blank line
// read as a value, a comma that moves the lines after it, a folder without its trailing separator, a
// folder that does not exist, an emulator program that cannot be found, and the read error itself.
// Relative folders are taken from home; a bare program name is also looked for in searchPath, a
// list of folders separated by ':' like PATH.
SettingsCheck checkSettings(const std::string& home, platform::Files& files, const std::string& searchPath);

// The same on the real disk, with the PATH of the environment.
SettingsCheck checkSettings(const std::string& home);

// What to mend first in a settings file that cannot be read, in one line: the first comment, blank
// line or comma that moved the lines after it, when one stands at or before the line where the reading
// broke (the break itself is only where the damage showed); else the reading error. Empty when the file
// reads to its end.
std::string firstSettingsProblem(const std::string& home, platform::Files& files);

} // namespace ombrel::config
