// The browser's picture strip on a whole cabinet: the grid SetListSize lays out for a picture skin, the
// pictures each step of the selection puts in its cells, and the mouse on the cells.
#include "CabinetFixture.h"

#include "browser/ListStrip.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using namespace ombrel;
using runtime::InputKind;
using test::Box;
using test::boxOf;

namespace {

constexpr uint32_t kSchemeBack = 0x123456;

// A cabinet whose skin asks for a snap strip. Lists 1 and 2 keep their pictures in art/snap/; of list 1
// (six games) game 3 has none and game 4's cannot be read; list 2 (three games) has all of its own and
// names its folder relative to the program's.
class PictureStripTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const std::string art = fx.home.path() + "art/";
        for (const char* name : { "g1_001", "g1_002", "g1_005", "g1_006", "g2_001", "g2_002", "g2_003" })
            fx.home.write("art/snap/" + std::string(name) + ".png", test::pngHeader(4, 3));
        fx.home.write("art/snap/g1_004.png", "not a picture");
        fx.home.write("omthemes/Skin/screen32.jpg", test::pngHeader(4, 3));
        std::string skin = test::CabinetSetup::kDesignSkin;
        skin.replace(skin.find("\nlist\r"), 6, "\nsnap\r");
        fx.boot({ .muted = true,
            .listSizes = { 6, 3 },
            .ini =
                [&](test::IniSample& ini) {
                    ini.setBlock(1, 8, art);
                    ini.setBlock(2, 8, "art\\"); // below the program's folder
                },
            .skin = skin });
        fx.cabinet().scheme.schemeBack = kSchemeBack;
        standIn = fx.home.path() + "omthemes/Skin/screen32.jpg";
    }

    startup::MainForm& main() { return fx.main(); }

    // Rebuilds the grid over a rectangle (Left, Top, Width, Height) with cells of a size and a gap.
    void buildGrid(const Box& shape, double cellWidth, double cellHeight, double gap)
    {
        auto& c = main().c;
        c.Shape1.move(shape[0], shape[1], shape[2], shape[3]);
        c.xlist(0).setWidth(cellWidth);
        c.xlist(0).setHeight(cellHeight);
        main().strip.stripGap = gap;
        browser::SetListSize(c, fx.cabinet().run, main().strip, fx.cabinet().scheme);
    }

    // Selects a game of a list and lets the navigator fill the cells.
    void select(int list, int index)
    {
        auto& main = this->main();
        while (fx.curPath() != list)
            main.nav.gNextPath();
        main.c.List1.setListIndex(index);
        main.nav.RefreshList();
    }

    // What each cell shows: "-" hidden, "*" the skin's picture, else the number of the game whose
    // picture it is ("g1_005.png" is "5").
    std::string shownCells()
    {
        std::string shown;
        for (int k = 0; k < main().c.xlist.count(); ++k) {
            const runtime::PictureControl& cell = main().c.xlist(k);
            std::string what = cell.fileName();
            if (!cell.visible())
                what = "-";
            else if (what == standIn)
                what = "*";
            else if (what.ends_with(".png") && what.rfind('_') != std::string::npos)
                what = std::to_string(std::stoi(what.substr(what.rfind('_') + 1)));
            shown += (k ? " " : "") + what;
        }
        return shown;
    }

    test::CabinetFixture fx;
    std::string standIn;
};

TEST_F(PictureStripTest, CellsFillTheRectangleRowByRowAroundAFramedMiddle)
{
    // Square cells of 1000 twips; the grid's rows of perRow cells start at the rectangle's corner and
    // follow each other at the cell's size and the gap.
    struct Row
    {
        const char* name;
        Box shape;
        double gap;
        int count, perRow, midRow;
    };
    const Row rows[] = {
        { "3 x 3 without a gap", { 0, 0, 3000, 3000 }, 0, 9, 3, 4 },
        { "4 x 2: an even count puts the middle at the head of the second row", { 0, 0, 4000, 2000 }, 0, 8, 4,
            4 },
        { "the right edge lets a cell stand out by one gap", { 100, 200, 3080, 2100 }, 50, 6, 3, 3 },
        { "a wide gap wraps early and leaves out the cells past the bottom", { 0, 0, 3000, 3000 }, 200, 4, 2,
            2 },
        { "the bottom edge lets nothing stand out", { 0, 0, 2000, 2050 }, 100, 2, 2, 1 },
        { "a cell larger than the rectangle stays alone", { 0, 0, 900, 900 }, 0, 1, 1, 0 },
    };
    auto& c = main().c;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        buildGrid(row.shape, 1000, 1000, row.gap);
        EXPECT_EQ(fx.cabinet().run.midRow, row.midRow);
        ASSERT_EQ(c.xlist.count(), row.count); // the last build's cells are gone
        const auto cellAt = [&](int k) {
            return Box { row.shape[0] + (k % row.perRow) * (1000 + row.gap),
                row.shape[1] + (k / row.perRow) * (1000 + row.gap), 1000, 1000 };
        };
        for (int k = 0; k < row.count; ++k) {
            EXPECT_EQ(boxOf(c.xlist(k)), cellAt(k)) << k;
            EXPECT_TRUE(c.xlist(k).visible()) << k;
        }
        // The frame stands out 50 twips around the middle cell, which is in front of it.
        const Box middle = cellAt(row.midRow);
        EXPECT_EQ(boxOf(c.shphigh), (Box { middle[0] - 50, middle[1] - 50, 1100, 1100 }));
        EXPECT_TRUE(c.shphigh.visible());
        EXPECT_EQ(main().controls().back(), &c.xlist(row.midRow));
        EXPECT_EQ(std::tuple(c.ll.count(), c.ll(0).visible()), std::tuple(1, false));
    }

    // Cells without a size give no grid, and a skin's absurdly small ones stop at the bound.
    buildGrid({ 0, 0, 3000, 3000 }, 0, 1000, 0);
    EXPECT_EQ(c.xlist.count(), 1);
    buildGrid({ 0, 0, 7680, 5760 }, 1, 1, 0);
    EXPECT_EQ(c.xlist.count(), browser::kMaxStripRows);
}

TEST_F(PictureStripTest, EachStepShowsTheGamesAroundTheSelectionAndHidesCellsWithoutOne)
{
    buildGrid({ 0, 0, 3000, 3000 }, 1000, 1000, 0); // 3 x 3, the middle cell 4
    main().c.xlist(0).setProperty(124, 1);
    struct Row
    {
        const char* name;
        int list, index; // -1: list 1 emptied
        std::string cells;
    };
    // One walk: each step starts from the cells the step before left.
    const Row rows[] = {
        { "first game: the cells before the middle hide", 1, 0, "- - - - 1 2 * * 5" },
        { "moving away from the start shows hidden cells again; a game without a picture keeps the skin's", 1,
            2, "- - 1 2 * * 5 6 -" },
        { "last game: the cells after the middle hide", 1, 5, "2 * * 5 6 - - - -" },
        { "a list shorter than the grid hides both ends", 2, 1, "- - - 1 2 3 - - -" },
        { "an empty list: nothing reaches row 0, so the cells before the middle show the skin's picture", 1,
            -1, "* * * * * - - - -" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        select(row.list, std::max(row.index, 0));
        if (row.index < 0) {
            fx.cabinet().catalogue.list(row.list)->clear();
            main().c.List1.clear();
            main().nav.RefreshList();
        }
        EXPECT_EQ(shownCells(), row.cells);
        EXPECT_EQ(main().c.lblPath.caption(), main().c.List1.text());
        for (int k = 0; k < main().c.xlist.count(); ++k) {
            EXPECT_EQ(main().c.xlist(k).backColor(), kSchemeBack) << k;
            EXPECT_EQ(main().c.xlist(k).property(124), 0) << k;
        }
    }
    // The cells before the middle of the empty list lead nowhere.
    fx.click("Main.xlist(0)");
    EXPECT_EQ(fx.listIndex(), -1);
    // A game without a picture is no failure, nor is that click; a picture that cannot be read is one,
    // told once.
    const std::string log = fx.failureEcho.str();
    EXPECT_EQ(log.find("ListIndex"), std::string::npos) << log;
    EXPECT_EQ(log.find("g1_003"), std::string::npos) << log;
    const size_t damaged = log.find("g1_004.png");
    EXPECT_NE(damaged, std::string::npos) << log;
    EXPECT_EQ(log.find("g1_004.png", damaged + 1), std::string::npos) << log;

    // A picture strip of a kind nobody knows is built but never filled: the cells stay as xlist(0) was.
    select(2, 1);
    fx.cabinet().run.listType = "poster";
    browser::SetListSize(main().c, fx.cabinet().run, main().strip, fx.cabinet().scheme);
    select(2, 2);
    EXPECT_EQ(shownCells(), "* * * * * * * * *");
    EXPECT_EQ(main().c.lblPath.caption(), "Game 2-2");
}

TEST_F(PictureStripTest, TheMouseOnACellStartsItsGameAndScrolls)
{
    buildGrid({ 0, 0, 3000, 3000 }, 1000, 1000, 0);
    select(1, 2);
    // (A click bringing its cell's game to the middle is the scenario picture-strip.) The right button
    // starts the scrolling by pages and stops it at its next press; the release and the other buttons
    // change nothing, and the saver countdown runs on. (On the middle cell, so that the left button's
    // click moves nothing.)
    const auto timers = [&] {
        return std::tuple(
            main().timscroller.enabled(), main().timscroller2.enabled(), main().timScr.enabled());
    };
    const bool saver = main().timScr.enabled();
    const std::tuple<InputKind, int, bool> presses[] = { { InputKind::MouseDown, 2, true },
        { InputKind::MouseUp, 2, true }, { InputKind::MouseDown, 1, true }, { InputKind::MouseUp, 1, true },
        { InputKind::MouseDown, 2, false } };
    for (const auto& [kind, button, scrolling] : presses) {
        fx.mouse(kind, "Main.xlist(4)", button);
        EXPECT_EQ(timers(), std::tuple(scrolling, false, saver));
    }

    // A double click: its first click chooses, and the game starts at once.
    fx.mouse(InputKind::DblClick, "Main.xlist(3)");
    EXPECT_EQ(fx.listIndex(), 1);
    EXPECT_EQ(fx.cabinet().run.runRom, "g1_002");
}

} // namespace
