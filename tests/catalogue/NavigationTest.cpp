// Navigation: the lists that count, the walk with nothing to show, logos, pages, the picture strip's
// folder, the mouse, and loading every list at start.
#include "RuntimeFixture.h"
#include "BrowserListTest.h"
#include "TempHome.h"

#include "catalogue/Navigation.h"
#include "runtime/InputEvent.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

using namespace ombrel;
using Strings = std::vector<std::string>;

namespace {

// A GIF header is all a logo needs to load.
const std::string kGif("GIF89a\x02\x00\x02\x00", 10);

class NavigationTest : public test::BrowserListTest
{
protected:
    NavigationTest()
    {
        nav.emplace(context(),
            catalogue::NavigationControls { *main, *list1, *lblPath, *xlogo, *ll, *lblNav, {},
                [this](int path, const std::string& fallback) {
                    shots.push_back({ path, fallback });
                } });
        nav->wireMouse();
    }

    // Games named "<path>-<i>" with descriptions from the list; for Extras, folders "dir<i>\".
    void fill(int path, const Strings& descriptions)
    {
        catalogue::Table& table = *cat.list(path);
        for (int i = 1; i <= static_cast<int>(descriptions.size()); ++i) {
            table.set(i, 1, std::to_string(path) + "-" + std::to_string(i));
            table.set(i, 2, descriptions[static_cast<size_t>(i - 1)]);
            table.set(i, 3, "dir" + std::to_string(i) + "\\");
        }
    }
    void show(int path, int index = 0)
    {
        run.curPath = path;
        nav->populateList();
        if (index != 0)
            list1->setListIndex(index);
    }
    Strings items() const
    {
        Strings out;
        for (int i = 0; i < list1->listCount(); ++i)
            out.push_back(list1->list(i));
        return out;
    }
    Strings strip() const
    {
        Strings out;
        for (int k = 0; k < 5; ++k)
            out.push_back((*ll)(k).caption());
        return out;
    }

    std::vector<std::pair<int, std::string>> shots;
    std::optional<catalogue::Navigator> nav;
};

// The walk among lists with games, both ways round, is pinned by the scenarios that change lists.
TEST_F(NavigationTest, OnlyTwelveListsCountAsGamesToShow)
{
    for (int path : { 1, 6, 7, 20, 21, 25, 26, 27 }) {
        SCOPED_TRACE(path);
        cat = catalogue::Catalogue();
        list1->clear();
        list1->setVisible(false);
        (*ll)(2).setCaption("");
        fill(path, { "only" });
        show(path);
        bool counts = path <= 6 || (path >= 21 && path <= 25) || path == 27;
        EXPECT_EQ(list1->visible(), counts);
        EXPECT_EQ(items(), counts ? Strings { "only" } : Strings {});
        EXPECT_EQ((*ll)(2).caption(), counts ? "" : catalogue::kNoRomsMessage);
    }
}

TEST_F(NavigationTest, WalkWithNothingToShow)
{
    // Without a list that counts, the path stays and the strip says why.
    fill(7, { "hidden" });
    run.curPath = 5;
    list1->setVisible(true);
    nav->gNextPath();
    EXPECT_EQ(run.curPath, 5);
    EXPECT_EQ((*ll)(2).caption(), catalogue::kNoRomsMessage);

    // Before the strip is laid out there is no middle row to write to.
    ll->unload(2);
    nav->gPrevPath();
    nav->RefreshList();
    EXPECT_EQ(run.curPath, 5);

    list1->setVisible(false);
    fill(1, { "a" });
    nav->gNextPath();
    EXPECT_EQ(run.curPath, 5) << "no walk while no list is on hand";
}

TEST_F(NavigationTest, LogosStayWhereAListHasNone)
{
    home.write("impact.gif", kGif);
    fill(21, { "x" });
    show(21);
    show(22); // no modeler.gif
    EXPECT_EQ(lblPath->caption(), "Modeler Roms:");
    EXPECT_EQ(xlogo->picture(), home.path() + "impact.gif"); // (a skin without logos: skin-phosphor)
}

TEST_F(NavigationTest, PagesStopAtTheEnds)
{
    // Items in the list, the selection, next or back a page, the selection after.
    const std::tuple<int, int, bool, int> rows[] = { { 10, 3, true, 5 }, { 10, 7, true, 9 }, { 2, 0, true, 1 },
        { 10, 5, false, 3 }, { 10, 2, false, 0 }, { 0, -1, true, -1 }, { 0, -1, false, -1 } };
    for (const auto& [count, start, next, expected] : rows) {
        SCOPED_TRACE(std::to_string(count) + " " + std::to_string(start) + (next ? " next" : " back"));
        list1->clear();
        for (int i = 0; i < count; ++i)
            list1->addItem("g");
        list1->setListIndex(start);
        next ? nav->gNextPage() : nav->gPrevPage();
        EXPECT_EQ(list1->listIndex(), expected);
    }
}

TEST_F(NavigationTest, PictureStripFolderAndFallback)
{
    settings.artDir[3] = "e:\\art3\\";
    settings.impactDir = "i:\\";
    settings.u64Dir = "u1\\";
    settings.u64Dir2 = "u2\\";
    fill(3, { "a" });
    fill(21, { "a" });
    fill(23, { "Killer Instinct", "Cruis'n USA" });
    fill(27, { "a", "b" });
    // The strip's kind, the list and the selection; the folder looked in and the stand-in picture.
    const std::tuple<const char*, int, int, std::string, std::string> rows[] = {
        { "marquee", 3, 0, "e:\\art3\\marquees\\", "marquee32.jpg" },
        { "snap", 21, 0, "i:\\snap\\", "screen32.jpg" },
        { "cabinet", 23, 0, "u1\\cabinets\\", "cabinet32.jpg" },
        { "flyer", 23, 1, "u2\\flyers\\", "flyer32.jpg" },
        { "snap", 27, 1, "dir2\\snap\\", "screen32.jpg" },
    };
    for (const auto& [listType, path, selected, scanDir, fallback] : rows) {
        SCOPED_TRACE(std::string(listType) + " " + std::to_string(path));
        shots.clear();
        run.listType = listType;
        show(path, selected);
        nav->RefreshList();
        EXPECT_EQ(run.scanDir, scanDir);
        EXPECT_EQ(shots, (std::vector<std::pair<int, std::string>> { { path, fallback } }));
    }
    shots.clear();
    show(0);
    nav->RefreshList();
    EXPECT_TRUE(shots.empty()) << "no list, no pictures";
}

TEST_F(NavigationTest, MouseMovesWithoutDrawing)
{
    for (int path : { 2, 9, 21 })
        fill(path, Strings(10, "g"));
    // Where, how and with which shift keys; the list and the selection after.
    using K = runtime::InputKind;
    const std::tuple<std::string, K, int, int, int> rows[] = {
        { "Main.lblNav(0)", K::Click, 0, 2, 0 },
        { "Main.lblNav(1)", K::Click, 0, 9, 3 },
        { "Main.lblNav(2)", K::Click, 0, 9, 5 },
        { "Main.lblPath", K::MouseDown, 0, 21, 0 },
        { "Main.lblPath", K::MouseDown, runtime::kCtrlMask, 2, 0 },
        { "Main.xlogo", K::Click, 0, 21, 0 },
    };
    for (const auto& [target, kind, shift, path, index] : rows) {
        SCOPED_TRACE(target + " shift " + std::to_string(shift));
        show(9, 5);
        nav->RefreshList();
        xlogo->setVisible(true); // as a skin with a logo shows it: a hidden one takes no clicks
        Strings before = strip();
        fx.post(kind, 0, shift, target);
        EXPECT_EQ(run.curPath, path);
        EXPECT_EQ(list1->listIndex(), index);
        EXPECT_EQ(strip(), before);
    }
}

TEST_F(NavigationTest, LoadListsReadsActiveFilesOnlyAndNothingWithoutAMasterList)
{
    home.write("gamelist.lst", "\"a\",\"Alpha\"\r\n");
    settings.romDir[3] = "r3\\";
    settings.s11Dir = "s11\\"; // the last one loaded, with no file yet
    home.write("l 3.lst", "\"a\",\"Alpha\"\r\n");
    home.write("l 4.lst", "\"off\",\"Switched off\"\r\n");
    nav->loadLists();
    EXPECT_TRUE(cat.games[4].at(1, 1).empty());
    EXPECT_TRUE(home.exists("l25.lst"));
    EXPECT_FALSE(home.exists("l21.lst"));
    // From the S11 list, empty, on round past 27 to the first list with games.
    EXPECT_EQ(run.curPath, 3);

    std::filesystem::remove(home.root() / "gamelist.lst");
    home.write("extra.lst", "{\r\nExe=a\r\nDisplay=A\r\nPath=\r\nOptions=\r\n}\r\n");
    cat = catalogue::Catalogue();
    list1->clear();
    run.curPath = 1;
    nav->loadLists();
    EXPECT_TRUE(cat.games[3].at(1, 1).empty());
    EXPECT_TRUE(cat.extras.at(1, 1).empty());
    EXPECT_EQ(run.curPath, 1);
    EXPECT_EQ(list1->listCount(), 0);
}

} // namespace
