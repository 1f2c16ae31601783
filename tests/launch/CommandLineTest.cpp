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
    struct Row
    {
        const char* name;
        std::string line;
        Words words;
    };
    const Row rows[] = {
        { "blanksAndTabsRuns", " \tmame  \t pacman\t-skip_gameinfo ", { "mame", "pacman", "-skip_gameinfo" } },
        // An empty list runs the emulator with an empty ROM name and empty options: no word for either.
        { "emptyRomAndOptions", "emu\\mame.exe  ", { "emu\\mame.exe" } },
        { "doubleQuotesGroup", "mame \"street fighter\" -x", { "mame", "street fighter", "-x" } },
        { "quotedTextJoinsItsNeighbours", "run --rom=\"a b\"c", { "run", "--rom=a bc" } },
        // issue "apostrophes": an extras entry must not swallow the rest of its line.
        { "apostropheIsText", "C:\\ps\\psx.exe Tony Hawk's Pro Skater.iso -full",
            { "C:\\ps\\psx.exe", "Tony", "Hawk's", "Pro", "Skater.iso", "-full" } },
        { "apostrophesDoNotGroup", "mame 'a  b' '' x", { "mame", "'a", "b'", "''", "x" } },
        // A quoted Windows folder ends in a backslash, which must not take the closing quote as text.
        { "backslashIsText", "C:\\mame\\mame.exe \"C:\\roms\\\" a\\ b", { "C:\\mame\\mame.exe", "C:\\roms\\", "a\\", "b" } },
        { "shellCharactersAreText", "emu ;$HOME `ls` a|b a&b *.zip ~/x $(rm) Bob's;`id`",
            { "emu", ";$HOME", "`ls`", "a|b", "a&b", "*.zip", "~/x", "$(rm)", "Bob's;`id`" } },
        { "openQuoteRunsToTheEnd", "emu \"open  it's rest", { "emu", "open  it's rest" } },
        { "nothing", " \t ", {} },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(splitCommandLine(row.line), row.words);
    }
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
    struct Row
    {
        const char* name;
        std::string word;
        std::optional<std::string> program;
    };
    const Row rows[] = {
        { "relativeFolderFromProgramFolder", "emu\\mame", "/cab/emu/mame" },
        { "programFolderBeforePath", "twice", "/cab/twice" },
        { "bareOnPath", "daphne", "/usr/games/daphne" },
        { "exeTriedWithout", "daphne.exe", "/usr/games/daphne" },
        { "exeWithFolderTriedWithout", "emu\\mame.exe", "/cab/emu/mame" },
        // "x.exe" anywhere on the search goes before "x" anywhere.
        { "asWrittenBeforeFallback", "both.exe", "/usr/games/both.exe" },
        { "nameWithFolderNotOnPath", "games/daphne", std::nullopt },
        { "emptyPathEntryIsNoFolder", "relonly", std::nullopt },
        { "missing", "nothing.exe", std::nullopt },
        { "empty", "", std::nullopt },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(resolveProgram(row.word, home, path, find), row.program);
    }
}

TEST_F(ProgramLookup, CommandLineGetsItsProgramAndKeepsItsArguments)
{
    struct Row
    {
        const char* name;
        std::string line;
        std::optional<Words> argv;
    };
    const Row rows[] = {
        // A folder with a blank in its name, written without quotes, as the settings join it.
        { "blankInFolder", "My Emus\\mame.exe pacman", Words { "/cab/My Emus/mame", "pacman" } },
        { "blanksKeptAsWritten", "/opt/My  Emus/mame \"a b\"", Words { "/opt/My  Emus/mame", "a b" } },
        // An apostrophe no longer stops the search for a folder with blanks: it groups nothing.
        { "apostropheInFolder", "Bob's Emus\\mame.exe Bob's game", Words { "/cab/Bob's Emus/mame", "Bob's", "game" } },
        { "quotedFirstWordNotExtended", "\"My\" Emus/mame x", std::nullopt },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(resolveCommandLine(row.line, home, path, find), row.argv);
    }
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
