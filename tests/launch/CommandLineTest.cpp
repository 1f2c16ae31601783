// Tests of command-line splitting, program look-up and working folders.
#include "launch/CommandLine.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace ombrel::launch {
namespace {

using Words = std::vector<std::string>;

TEST(SplitCommandLine, SplitsAsAWindowsProgramWithNothingExpanded)
{
    const std::pair<std::string, Words> rows[] = {
        { " \tmame  \t pacman\t-skip_gameinfo ", { "mame", "pacman", "-skip_gameinfo" } },
        // An empty list runs the emulator with an empty ROM name and empty options: no word for either.
        { "emu\\mame.exe  ", { "emu\\mame.exe" } },
        { "mame \"street fighter\" -x", { "mame", "street fighter", "-x" } },
        { "run --rom=\"a b\"c", { "run", "--rom=a bc" } },
        // issue "apostrophes": an extras entry must not swallow the rest of its line.
        { "C:\\ps\\psx.exe Tony Hawk's Pro Skater.iso -full",
            { "C:\\ps\\psx.exe", "Tony", "Hawk's", "Pro", "Skater.iso", "-full" } },
        { "mame 'a  b' '' x", { "mame", "'a", "b'", "''", "x" } },
        // A quoted Windows folder ends in a backslash, which must not take the closing quote as text.
        { "C:\\mame\\mame.exe \"C:\\roms\\\" a\\ b", { "C:\\mame\\mame.exe", "C:\\roms\\", "a\\", "b" } },
        { "emu ;$HOME `ls` a|b a&b *.zip ~/x $(rm) Bob's;`id`",
            { "emu", ";$HOME", "`ls`", "a|b", "a&b", "*.zip", "~/x", "$(rm)", "Bob's;`id`" } },
        { "emu \"open  it's rest", { "emu", "open  it's rest" } },
        { " \t ", {} },
    };
    for (const auto& [line, words] : rows)
        EXPECT_EQ(splitCommandLine(line), words) << line;
}

// A disk of a few programs: the cabinet lies in /cab/.
class ProgramLookup : public ::testing::Test
{
protected:
    const std::string home = "/cab/";
    const std::string path = "/usr/local/bin::/usr/games";
    std::set<std::string> files = { "/cab/emu/mame", "/cab/both", "/cab/twice", "/usr/games/twice",
        "/usr/games/both.exe", "/usr/games/daphne", "/usr/local/bin/mame", "/cab/My Emus/mame",
        "/cab/Bob's Emus/mame", "/opt/My  Emus/mame", "relonly" };
    FindProgram find = [this](const std::string& p) -> std::optional<std::string> {
        if (files.count(p) != 0)
            return p;
        return std::nullopt;
    };
};

TEST_F(ProgramLookup, ResolvesFromProgramFolderThenPath)
{
    const std::pair<std::string, std::optional<std::string>> rows[] = {
        { "emu\\mame", "/cab/emu/mame" }, // a folder counts from the program's
        { "twice", "/cab/twice" }, // the program's folder before the path
        { "daphne", "/usr/games/daphne" },
        { "daphne.exe", "/usr/games/daphne" },
        { "emu\\mame.exe", "/cab/emu/mame" },
        // "x.exe" anywhere on the search goes before "x" anywhere.
        { "both.exe", "/usr/games/both.exe" },
        { "games/daphne", std::nullopt }, // a name with a folder is not looked for on the path
        { "relonly", std::nullopt }, // an empty entry of the path is no folder
        { "nothing.exe", std::nullopt },
        { "", std::nullopt },
    };
    for (const auto& [word, program] : rows)
        EXPECT_EQ(resolveProgram(word, home, path, find), program) << word;
}

TEST_F(ProgramLookup, CommandLineGetsItsProgramAndKeepsItsArguments)
{
    const std::pair<std::string, std::optional<Words>> rows[] = {
        // A folder with a blank in its name, written without quotes, as the settings join it.
        { "My Emus\\mame.exe pacman", Words { "/cab/My Emus/mame", "pacman" } },
        { "/opt/My  Emus/mame \"a b\"", Words { "/opt/My  Emus/mame", "a b" } },
        // An apostrophe no longer stops the search for a folder with blanks: it groups nothing.
        { "Bob's Emus\\mame.exe Bob's game", Words { "/cab/Bob's Emus/mame", "Bob's", "game" } },
        { "\"My\" Emus/mame x", std::nullopt },
    };
    for (const auto& [line, argv] : rows)
        EXPECT_EQ(resolveCommandLine(line, home, path, find), argv) << line;
}

TEST(WorkingFolder, RelativeAndEmptyFoldersAreTheProgramFolders)
{
    const std::pair<std::string, std::string> rows[] = { { "", "/cab/" }, { "emu\\daphne\\", "/cab/emu/daphne/" },
        { "emu/sub", "/cab/emu/sub" }, { "/opt/emu/", "/opt/emu/" } };
    for (const auto& [dir, folder] : rows)
        EXPECT_EQ(workingFolder(dir, "/cab/"), folder) << dir;
}

} // namespace
} // namespace ombrel::launch
