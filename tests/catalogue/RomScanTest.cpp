// The ROM scan: which games each list gets and in what order, the list files' text, the two Ultra 64
// folders, what the player sees while it runs, and what damaged or missing input leaves behind.
#include "RuntimeFixture.h"
#include "BrowserListTest.h"
#include "TempHome.h"

#include "catalogue/Navigation.h"
#include "catalogue/RomScan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace ombrel;

namespace {

using Games = std::vector<std::pair<std::string, std::string>>; // ROM name, description

// The text the scan writes for these games.
std::string lines(const Games& games)
{
    std::string text;
    for (const auto& [rom, description] : games)
        text += "\"" + rom + "\",\"" + description + "\"\r\n";
    return text;
}

class RomScanTest : public test::BrowserListTest
{
protected:
    RomScanTest()
    {
        catalogue::CatalogueContext ctx = context();
        nav.emplace(ctx, catalogue::NavigationControls { *main, *list1, *lblPath, *xlogo, *ll, *lblNav, {}, {} });
        scan.emplace(ctx, *nav, catalogue::ScanControls { *main, *list1, *lblPath, *ll });
    }

    // Writes gamelist.lst and reads it, as the boot does.
    void master(const Games& games)
    {
        home.write("gamelist.lst", lines(games));
        ASSERT_TRUE(catalogue::readGameList({ settings, run, cat, fx.files, home.path() }));
    }
    void touch(const std::string& relative) { home.write(relative, ""); }
    std::vector<std::string> fileWrites() const
    {
        std::vector<std::string> out;
        std::copy_if(fx.trace.lines.begin(), fx.trace.lines.end(), std::back_inserter(out),
            [](const std::string& line) { return line.rfind("file write", 0) == 0; });
        return out;
    }

    test::TempHome elsewhere; // a folder given with its full path
    std::optional<catalogue::Navigator> nav;
    std::optional<catalogue::RomScan> scan;
};

TEST_F(RomScanTest, EachListGetsTheMasterListsGamesFoundInItsFolderInTheMasterListsOrder)
{
    // A game without a description is left out of every list.
    master({ { "zaxxon", "Zaxxon" }, { "pacman", "Pac-Man" }, { "nodesc", "" }, { "ki", "Killer Instinct" },
        { "bride", "Bride" }, { "dl", "Dragon's Lair" } });
    struct Row
    {
        int list;
        std::vector<std::string> files; // below the program's folder, or below `elsewhere` for "/"
        Games expected;
    };
    settings.romDir[1] = "roms\\1\\"; // relative: from the program's folder
    settings.romDir[2] = "ROMS\\Two\\"; // written in another case than the disk's
    settings.romDir[3] = elsewhere.path(); // a full path
    settings.romDir[4] = "roms\\4"; // no closing separator: "4" stands in front of every name
    settings.impactDir = "imp\\";
    settings.vpDir = "vp\\";
    settings.daphneDir = "daphne\\";
    const std::vector<Row> rows {
        // issue "folder named like a ROM": roms/1/ki.zip/ is a folder, no ROM.
        { 1, { "roms/1/PACMAN.zip", "roms/1/Zaxxon.Zip", "roms/1/nodesc.zip", "roms/1/ki.img", "roms/1/ki.zip/x" },
            { { "zaxxon", "Zaxxon" }, { "pacman", "Pac-Man" } } },
        { 2, { "roms/two/ki.zip" }, { { "ki", "Killer Instinct" } } },
        { 3, { "/bride.zip" }, { { "bride", "Bride" } } },
        { 4, { "roms/4pacman.zip", "roms/4/zaxxon.zip" }, { { "pacman", "Pac-Man" } } },
        { 21, { "imp/roms/zaxxon.zip", "imp/zaxxon.zip" }, { { "zaxxon", "Zaxxon" } } },
        { 24, { "vp/tables/pacman.vpt", "vp/tables/ki.zip" }, { { "pacman", "Pac-Man" } } },
        { 26, { "daphne/dl.txt", "daphne/roms/bride.txt" }, { { "dl", "Dragon's Lair" } } },
    };
    for (const Row& row : rows) {
        for (const std::string& file : row.files) {
            if (file.front() == '/')
                elsewhere.write(file.substr(1), "");
            else
                touch(file);
        }
    }

    scan->CheckForFiles();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.list);
        EXPECT_EQ(home.read(catalogue::listFileName(row.list)), lines(row.expected));
    }
    EXPECT_FALSE(home.exists("l23.lst")) << "Ultra 64 is switched off";
    EXPECT_FALSE(home.exists("l 5.lst"));
}

TEST_F(RomScanTest, UltraSixtyFourWithOneFolderOnly)
{
    // Both folders together are pinned by the first-run scenario.
    master({ { "ki", "Killer Instinct" }, { "ki2", "Killer Instinct 2" }, { "gex", "Gex" } });
    touch("u1/roms/ki2.img");
    touch("u2/roms/ki.img");
    touch("u2/roms/gex.img");
    touch("roms/ki.img"); // the program's own roms folder
    settings.u64Dir = "u1\\";
    scan->CheckForFiles();
    EXPECT_EQ(home.read("l23.lst"), lines({ { "ki2", "Killer Instinct 2" }, { "ki", "Killer Instinct" } }));

    settings.u64Dir.clear();
    settings.u64Dir2 = "u2\\";
    scan->CheckForFiles();
    EXPECT_EQ(home.read("l23.lst"), lines({ { "ki", "Killer Instinct" }, { "ki", "Killer Instinct" }, { "gex", "Gex" } }));
}

TEST_F(RomScanTest, PlayerSeesTheMessageAndTheFolderBeingScanned)
{
    master({ { "a", "Alpha" } });
    settings.romDir[3] = "d:\\mame\\roms\\";
    scan->CheckForFiles();
    // The scan gives the event loop no turn: what was painted is the last frame the renderer got.
    std::string shown;
    for (const runtime::DrawCommand& command : fx.renderer.lastFrame())
        shown += command.text.empty() ? "" : command.text + " ";
    EXPECT_NE(shown.find(catalogue::kScanningMessage), std::string::npos) << shown;
    EXPECT_NE(shown.find("path 3: d:\\mame\\roms\\"), std::string::npos) << shown;
    EXPECT_FALSE(list1->visible());
}

TEST_F(RomScanTest, RefreshEmptiesEveryListButTheExtras)
{
    // What the refresh reads and shows is pinned by the refresh scenario.
    master({ { "a", "Alpha" } });
    settings.romDir[2] = "r2\\";
    touch("r2/a.zip");
    home.write("extra.lst", "{\r\nExe=x\r\nDisplay=Tool\r\nPath=\r\nOptions=\r\n}\r\n");
    cat.extras.set(2, 1, "kept"); // no longer in extra.lst
    cat.games[7].set(1, 1, "stale");
    scan->refreshAll();
    EXPECT_EQ(cat.games[2].at(1, 2), "Alpha");
    EXPECT_TRUE(cat.games[7].at(1, 1).empty());
    EXPECT_EQ(cat.extras.at(1, 1), "x");
    EXPECT_EQ(cat.extras.at(2, 1), "kept");
    EXPECT_EQ(run.curPath, 1) << "the scan says list 1 after the reading walked on";
}

// What damaged or missing input leaves in "l 1.lst" after a scan of list 1 (folder roms\).
struct FailureRow
{
    const char* name;
    int masterRows; // games g1, g2 ... with descriptions, all present in roms/; -1: no gamelist.lst
    const char* before; // "l 1.lst" before the scan
    std::string expected; // after it
    bool unplugged = false; // the folder is not there
};

TEST_F(RomScanTest, FailureRows)
{
    const std::string held = "\"old\",\"Old Game\"\r\n";
    auto numbered = [](int to) {
        Games games;
        for (int i = 1; i <= to; ++i)
            games.push_back({ "g" + std::to_string(i), "G " + std::to_string(i) });
        return games;
    };
    const std::vector<FailureRow> rows {
        { "an unplugged folder empties its list", 3, "\"old\",\"Old Game\"\r\n", "", true },
        { "4999 games: the walk ends, and of the finds the first 4000 are written", 4999, "", lines(numbered(4000)) },
        { "5000 games: the walk runs off the master list and nothing is written", 5000, held.c_str(), held },
        { "no master list: a list that holds games is kept", -1, held.c_str(), held },
        { "no master list: an empty list file is written again", -1, "", "" },
    };
    for (const FailureRow& row : rows) {
        SCOPED_TRACE(row.name);
        test::TempHome fresh;
        settings = {};
        settings.romDir[1] = "roms\\";
        cat = catalogue::Catalogue();
        catalogue::RomScan rowScan({ settings, run, cat, fx.files, fresh.path() }, *nav,
            catalogue::ScanControls { *main, *list1, *lblPath, *ll });
        const Games games = numbered(row.masterRows);
        for (const auto& game : games) {
            if (!row.unplugged)
                fresh.write("roms/" + game.first + ".zip", "");
        }
        if (row.masterRows >= 0) {
            fresh.write("gamelist.lst", lines(games));
            catalogue::readGameList({ settings, run, cat, fx.files, fresh.path() });
        }
        fresh.write("l 1.lst", row.before);
        rowScan.CheckForFiles();
        EXPECT_EQ(fresh.read("l 1.lst"), row.expected);
    }
}

TEST_F(RomScanTest, ListFilesAreReplacedWhereTheReadingFindsThemAndAFailureStopsNoOther)
{
    master({ { "a", "Alpha" } });
    settings.romDir[1] = "r\\";
    settings.romDir[2] = "r\\";
    settings.romDir[3] = "r\\";
    touch("r/a.zip");
    std::filesystem::create_directories(home.root() / "l 1.lst");
    home.write("L 2.LST", "");
    scan->CheckForFiles();
    EXPECT_EQ(fileWrites(), (std::vector<std::string> { "file write " + home.path() + "l 1.lst failed",
                                "file write " + home.path() + "L 2.LST", "file write " + home.path() + "l 3.lst" }));
    EXPECT_EQ(home.read("L 2.LST"), lines({ { "a", "Alpha" } })) << "under the case it has on disk";
    EXPECT_FALSE(home.exists("l 2.lst"));
    EXPECT_EQ(home.read("l 3.lst"), lines({ { "a", "Alpha" } })) << "a ROM in two paths is on both lists";
}

} // namespace
