// List files: names, which paths are read, the two-field lines, the limits of the tables, the Extras
// records, and what a damaged or missing file leaves behind.
#include "TempHome.h"

#include "catalogue/ListFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace ombrel;
using catalogue::CatalogueContext;

namespace {

using Rows = std::vector<std::vector<std::string>>;

// The filled rows of a table, up to the first whose column 1 is empty.
Rows rowsOf(const catalogue::Table& table)
{
    Rows rows;
    for (int r = 1; r <= table.length(); ++r) {
        std::vector<std::string> row;
        for (int c = 1; c <= table.columns(); ++c)
            row.push_back(table.at(r, c));
        rows.push_back(row);
    }
    return rows;
}

// A file of `count` lines "rN","Game N".
std::string numberedLines(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += "\"r" + std::to_string(i) + "\",\"Game " + std::to_string(i) + "\"\r\n";
    return text;
}

class ListFilesTest : public ::testing::Test
{
protected:
    CatalogueContext ctx() { return { settings, run, catalogue, files, home.path() }; }

    // Reads `text` as the file of list `path` (switched on) and returns its rows.
    Rows readList(int path, const std::string& text)
    {
        settings.romDir[1] = "c:\\roms\\";
        settings.impactDir = "c:\\impact\\";
        home.write(catalogue::listFileName(path), text);
        run.curPath = path;
        catalogue::makeArrays(ctx(), catalogue::listFileName(path));
        return rowsOf(*catalogue.list(path));
    }

    test::TempHome home;
    config::Settings settings;
    config::RunState run;
    catalogue::Catalogue catalogue;
    platform::DiskFiles files;
};

TEST_F(ListFilesTest, TwoFieldLinesInTheirForms)
{
    const std::pair<std::string, Rows> rows[] = {
        { "\"ki\",\"Killer Instinct, Arcade\"\r\n\"pacman\",\"Pac-Man\"\r\n",
            { { "ki", "Killer Instinct, Arcade" }, { "pacman", "Pac-Man" } } },
        { "galaga,Galaga\ndkong,Donkey Kong\n",
            { { "galaga", "Galaga" }, { "dkong", "Donkey Kong" } } },
        { "a,A\rb,B", { { "a", "A" }, { "b", "B" } } },
        { "\"mk\",\"Mortal \"Kombat\" II\"\r\n\"b\",\"B\"\r\n",
            { { "mk", "Mortal " }, { "b", "B" } } },
        { "solo\r\nb,B\r\nc,C\r\n",
            { { "solo", "b" }, { "B", "c" }, { "C", "" } } },
    };
    for (const auto& [text, expected] : rows) {
        catalogue.games[1].clear();
        EXPECT_EQ(readList(1, text), expected) << text;
    }
}

TEST_F(ListFilesTest, ListsStopAt4000RowsAndTheMasterListAt5000)
{
    EXPECT_EQ(readList(config::kImpactPath, numberedLines(4005)).size(), 4000u);
    EXPECT_EQ(catalogue.games[21].at(4000, 1), "r4000");
    EXPECT_EQ(run.gi, 4001);

    home.write("gamelist.lst", numberedLines(5003));
    ASSERT_TRUE(catalogue::readGameList(ctx()));
    EXPECT_EQ(rowsOf(catalogue.gameList).size(), 5000u);
    EXPECT_EQ(catalogue.gameList.at(5000, 2), "Game 5000");
    EXPECT_EQ(run.gi, 5001);
}

TEST_F(ListFilesTest, ANewReadingOverwritesRowsAndLeavesTheRest)
{
    readList(1, "a,A\r\nb,B\r\nc,C\r\n");
    EXPECT_EQ(readList(1, "x,X\r\n"), (Rows { { "x", "X" }, { "b", "B" }, { "c", "C" } }));
}

TEST_F(ListFilesTest, MissingFileIsCreatedEmptyAndAnotherCaseIsRead)
{
    settings.romDir[3] = "r\\";
    settings.romDir[4] = "r\\";
    home.write("L 4.LST", "a,A\r\n");
    settings.romDir[5] = "r\\";
    home.write("L 5.LST", "b,B\r\n");
    home.write("l 5.lst/keep", ""); // a folder in the file's place is not the file

    run.curPath = 3;
    catalogue::makeArrays(ctx(), "l 3.lst");
    EXPECT_TRUE(home.exists("l 3.lst"));
    EXPECT_EQ(home.read("l 3.lst"), "");

    run.curPath = 4;
    catalogue::makeArrays(ctx(), "l 4.lst");
    EXPECT_FALSE(home.exists("l 4.lst")) << "a file present in another case must not get a twin";
    EXPECT_EQ(home.read("L 4.LST"), "a,A\r\n");
    EXPECT_EQ(rowsOf(catalogue.games[4]), (Rows { { "a", "A" } }));

    run.curPath = 5;
    catalogue::makeArrays(ctx(), "l 5.lst");
    EXPECT_EQ(rowsOf(catalogue.games[5]), (Rows { { "b", "B" } }));
}

TEST_F(ListFilesTest, ExtrasRecords)
{
    struct Case
    {
        const char* name;
        std::string fileName;
        std::string text;
        Rows expected;
        std::string failure = {}; // what the reading says for the failure log
    };
    const std::string record
        = "{\r\nExe=game.exe\r\nDisplay=My Game\r\nPath=c:\\games\\\r\nOptions= -full \r\n}\r\n";
    const std::vector<Case> cases {
        { "labels cut by their length", "extra.lst", record,
            { { "game.exe", "My Game", "c:\\games\\", "-full" } } },
        { "comments between records and blanks around the brace", "extra.lst",
            "my programs\r\n" + record
                + "* next one\r\n  {  \r\nExe=b.exe\r\nDisplay=B\r\nPath=\r\nOptions=\r\nend\r\n",
            { { "game.exe", "My Game", "c:\\games\\", "-full" }, { "b.exe", "B", "", "" } } },
        { "a record cut short keeps the ones before it", "extra.lst",
            record + "{\r\nExe=c.exe\r\nDisplay=C\r\n",
            { { "game.exe", "My Game", "c:\\games\\", "-full" } },
            "extra.lst line 10: the file ends too early" },
        { "the file in another case", "EXTRA.LST", record,
            { { "game.exe", "My Game", "c:\\games\\", "-full" } } },
        { "a folder of that name is no file", "extra.lst/{", record, {} },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        test::TempHome caseHome;
        catalogue::Catalogue fresh;
        config::RunState state;
        CatalogueContext context { settings, state, fresh, files, caseHome.path() };
        caseHome.write(c.fileName, c.text);
        catalogue::CheckForExtras(context, caseHome.path() + "extra.lst");
        EXPECT_EQ(state.fileFound, !c.expected.empty());
        state.curPath = config::kExtrasPath;
        EXPECT_EQ(catalogue::makeArrays(context, "Extra.lst"), c.failure);
        EXPECT_EQ(state.fileFound, !c.expected.empty());
        EXPECT_EQ(rowsOf(fresh.extras), c.expected);
    }
}

} // namespace
