// CommandLine: how a launch's command line becomes a program, its arguments and its working folder.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace ombrel::launch {

// Splits a command line into words as a Windows program splits its own: the settings files come from
// Windows, where only double quotes group. Blanks and tabs separate words; double quotes group (and are
// dropped), and quoted text joins the unquoted text around it into one word; an empty pair of double
// quotes is an empty word; a double quote left open runs to the end. An apostrophe is an ordinary
// character ("Tony Hawk's Pro Skater.iso" is one word). A backslash is plain text too, even in front of
// a double quote, unlike in Windows' own rule: cabinet folders end in one ("d:\games\"). Nothing is
// expanded: ';', '$', '`', '|', '&', '*', '~' stay as written.
std::vector<std::string> splitCommandLine(const std::string& line);

// Looks for a file; gives back its path as it lies on disk, or nullopt when nothing runnable is there.
using FindProgram = std::function<std::optional<std::string>(const std::string& path)>;

// The program a command line's first word names, '\' taken as '/'. A name with a folder in it is taken
// from the program's folder when relative; a bare name is looked for in the program's folder, then in
// each folder of pathEnv (':'-separated, empty entries skipped). A name "x.exe" found nowhere is looked
// for again as "x", so settings written for Windows reach the Linux build of the same emulator.
std::optional<std::string> resolveProgram(const std::string& word, const std::string& programFolder,
    const std::string& pathEnv, const FindProgram& find);

// The words to run, the first one resolved as above. When the first word names nothing and was written
// without quotes, a folder with blanks in its name is tried as well: the first word joined with the
// words after it, as written, one more at a time, as Windows did with an unquoted command line.
// nullopt when the line is empty or no program is found.
std::optional<std::vector<std::string>> resolveCommandLine(const std::string& line,
    const std::string& programFolder, const std::string& pathEnv, const FindProgram& find);

// The folder a program runs in: '\' taken as '/', a relative folder taken from the program's folder,
// and no folder at all meaning the program's folder.
std::string workingFolder(const std::string& dir, const std::string& programFolder);

} // namespace ombrel::launch
