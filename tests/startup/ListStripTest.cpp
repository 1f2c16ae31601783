// The browser's text strip on a whole cabinet: the rows SetListSize lays out and RefreshList fills, the
// pulse of the middle row, and the mouse on the rows.
#include "CabinetFixture.h"

#include "browser/ListStrip.h"
#include "core/VbMath.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

using namespace ombrel;
using runtime::InputKind;
using test::CabinetFixture;

namespace {

constexpr uint32_t kSchemeBack = 0x123456;

// Boots a cabinet with these lists and rebuilds its strip over a rectangle rowsPerColumn rows high
// (and half a row more, which must not give another row), with rowAlign 0 so that it shows.
void buildStrip(CabinetFixture& fx, std::optional<double> listCols, int rowsPerColumn)
{
    auto& main = fx.main();
    const double rowHeight = main.c.ll(0).height(); // the boot's strip measured it
    main.c.Shape1.setHeight(rowHeight * rowsPerColumn + rowHeight / 2);
    main.strip.listCols = listCols;
    main.strip.rowAlign = 0;
    fx.cabinet().scheme.schemeBack = kSchemeBack;
    browser::SetListSize(main.c, fx.cabinet().run, main.strip, fx.cabinet().scheme);
}

// What each row shows, as "list-game" of the fixture's names ("Game 1-5" is "1-5"), "" when blank.
std::vector<std::string> shownRows(startup::MainForm& main)
{
    std::vector<std::string> rows;
    for (int k = 0; k < main.c.ll.count(); ++k) {
        std::string caption = main.c.ll(k).caption();
        rows.push_back(caption.starts_with("Game ") ? caption.substr(5) : caption);
    }
    return rows;
}

struct StripCase
{
    const char* name;
    std::vector<int> listSizes;
    std::optional<double> listCols; // nullopt: the skin left the value empty
    int rowsPerColumn; // 0: the rectangle is lower than one row
    int selected; // in list 1
    int pathSteps; // then to the next (+1) or the previous (-1) list that has games
    int midRow;
    std::vector<std::string> rows;
};

TEST(ListStripTest, RowsShowTheGamesAroundTheSelectionOnEveryShapeOfList)
{
    const StripCase cases[] = {
        { "fewer games than rows, no column count", { 3 }, std::nullopt, 7, 0, 0, 3,
            { "", "", "", "1-1", "1-2", "1-3", "" } },
        { "one game, a column count of 0", { 1 }, 0, 7, 0, 0, 3, { "", "", "", "1-1", "", "", "" } },
        { "even row count: the middle is below the centre", { 100 }, 1, 10, 50, 0, 5,
            { "1-46", "1-47", "1-48", "1-49", "1-50", "1-51", "1-52", "1-53", "1-54", "1-55" } },
        { "odd row count", { 100 }, 1, 11, 50, 0, 5,
            { "1-46", "1-47", "1-48", "1-49", "1-50", "1-51", "1-52", "1-53", "1-54", "1-55", "1-56" } },
        { "two columns of five: the middle heads the second", { 20 }, 2, 5, 10, 0, 5,
            { "1-6", "1-7", "1-8", "1-9", "1-10", "1-11", "1-12", "1-13", "1-14", "1-15" } },
        { "back from the first list wraps to a shorter last one", { 100, 3 }, 1, 7, 50, -1, 3,
            { "", "", "", "2-1", "2-2", "2-3", "" } },
        { "on from the last list wraps to a longer first one", { 100, 3 }, 1, 7, 50, 2, 3,
            { "", "", "", "1-1", "1-2", "1-3", "1-4" } },
        { "a rectangle lower than one row keeps ll(0) alone", { 100 }, 1, 0, 50, 0, 0, { "1-51" } },
    };
    for (const StripCase& row : cases) {
        SCOPED_TRACE(row.name);
        CabinetFixture fx;
        fx.boot({ .listSizes = row.listSizes });
        auto& main = fx.main();
        buildStrip(fx, row.listCols, row.rowsPerColumn);
        main.c.List1.setListIndex(row.selected);
        for (int step = 0; step < std::abs(row.pathSteps); ++step)
            row.pathSteps > 0 ? main.nav.gNextPath() : main.nav.gPrevPath();
        main.nav.RefreshList();

        EXPECT_EQ(fx.cabinet().run.midRow, row.midRow);
        EXPECT_EQ(shownRows(main), row.rows);
        // Rows go down each column, then on to the next; only a strip of columns centres its rows.
        const double columns = row.listCols.value_or(0) > 1 ? *row.listCols : 1;
        const int perColumn = std::max(row.rowsPerColumn, 1);
        const auto& shape = main.c.Shape1;
        for (int k = 0; k < main.c.ll.count(); ++k) {
            const runtime::Label& label = main.c.ll(k);
            SCOPED_TRACE(k);
            EXPECT_TRUE(label.visible());
            EXPECT_DOUBLE_EQ(label.top(), shape.top() + (k % perColumn) * main.c.ll(0).height());
            EXPECT_DOUBLE_EQ(label.left(), shape.left() + (k / perColumn) * shape.width() / columns);
            EXPECT_EQ(label.alignment(), columns > 1 ? 2 : 0);
            // The middle row stands out in the scheme's colours; in columns its name may grow.
            EXPECT_EQ(label.font().bold, k == row.midRow);
            EXPECT_EQ(label.foreColor() == kSchemeBack, k == row.midRow);
            EXPECT_EQ(label.autoSize(), k == row.midRow && columns > 1);
        }
    }

    // A skin's absurd rectangle and column count stop at the bound instead of loading labels for hours.
    CabinetFixture fx;
    fx.boot({});
    buildStrip(fx, 1e6, 1000000);
    EXPECT_EQ(fx.main().c.ll.count(), browser::kMaxStripRows);
}

// The pulse of a text strip's middle row is on every skin's scenario; a picture strip pulses the frame alone.
TEST(ListStripTest, APictureStripSkinTakesTheRowsDownAndPulsesOnlyItsHighlight)
{
    CabinetFixture fx;
    fx.boot({});
    auto& main = fx.main();
    auto& run = fx.cabinet().run;
    run.listType = "snap";
    run.midRow = 0;
    browser::SetListSize(main.c, run, main.strip, fx.cabinet().scheme);
    EXPECT_EQ(std::tuple(main.c.ll.count(), main.c.ll(0).visible(), main.c.shphigh.visible(), run.listType),
        std::tuple(1, false, true, "snap"));
    const uint32_t hiddenColour = main.c.ll(0).foreColor();
    // A colour of two channels, whose scaling as one number carries bits from green into red: scaled
    // channel by channel the first step would be 0x2001, not 8161. The eighth step keeps the colour.
    fx.cabinet().scheme.schemeFore = 0x00FF05; // 65285
    main.highStep = 0;
    for (uint32_t colour : { 8161u, 16321u, 32642u, 65285u, 65285u, 32642u, 16321u, 16321u, 8161u }) {
        fx.runFor(150);
        EXPECT_EQ(main.c.shphigh.backColor(), colour);
    }
    EXPECT_EQ(main.c.ll(0).foreColor(), hiddenColour);
}

TEST(ListStripTest, TheMouseOnTheRowsMovesTheSelectionStartsTheGameAndScrolls)
{
    CabinetFixture fx;
    fx.boot({ .muted = true });
    auto& main = fx.main();
    const int m = fx.cabinet().run.midRow;
    ASSERT_GE(m, 3); // rows enough for three above the middle
    const auto row = [m](int offset) { return "Main.ll(" + std::to_string(m + offset) + ")"; };
    main.c.List1.setListIndex(50);
    main.nav.RefreshList();

    // A click moves by the row's distance from the middle; the rows wait for the next redraw, so a
    // second click counts from the rows as they were drawn.
    fx.click(row(2));
    EXPECT_EQ(fx.listIndex(), 52);
    EXPECT_EQ(main.c.ll(m).caption(), "Game 1-51");
    fx.click(row(-3));
    EXPECT_EQ(fx.listIndex(), 49);
    // At the first game the rows above the middle are blank and take no click; those below still do.
    main.c.List1.setListIndex(0);
    main.nav.RefreshList();
    fx.click("Main.ll(0)");
    EXPECT_EQ(fx.listIndex(), 0);
    fx.click(row(3));
    EXPECT_EQ(fx.listIndex(), 3);

    // Held buttons: right scrolls by pages, left by games, both together both; either release stops both.
    // The timers, in order: timscroller (pages), timscroller2 (games), timScr.
    const auto timers = [&] {
        return std::tuple(main.timscroller.enabled(), main.timscroller2.enabled(), main.timScr.enabled());
    };
    for (int released : { 1, 2 }) {
        SCOPED_TRACE(released);
        fx.mouse(InputKind::MouseDown, "Main.ll(2)", 2);
        EXPECT_EQ(timers(), std::tuple(true, false, false));
        fx.mouse(InputKind::MouseDown, "Main.ll(2)", 1);
        EXPECT_EQ(timers(), std::tuple(true, true, false));
        fx.mouse(InputKind::MouseUp, "Main.ll(2)", released);
        EXPECT_EQ(timers(), std::tuple(false, false, true));
    }

    // Double click: its first click chooses, and the game starts at once.
    main.nav.RefreshList();
    fx.mouse(InputKind::DblClick, row(-2));
    EXPECT_EQ(fx.listIndex(), 1);
    EXPECT_EQ(fx.cabinet().run.runRom, "g1_002");
}

} // namespace
