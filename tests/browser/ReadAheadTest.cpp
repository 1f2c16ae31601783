// The read-ahead: which pictures are wished for after a step of the selection, in which order, and
// under which names, for the preview panels and for a picture strip.
#include "RuntimeFixture.h"

#include "browser/MainControls.h"
#include "browser/ReadAhead.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace ombrel::test {
namespace {

using browser::ReadAhead;

// A browser on list 1 of `games` games named g1, g2..., whose pictures lie below /art/.
class ReadAheadTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        settings.artDir[1] = "/art\\";
        setGames(1, 10);
        run.curPath = 1;
        showPanels(false, true, false, false);
    }

    void setGames(int path, int count)
    {
        c.List1.clear();
        for (int row = 1; row <= count; ++row) {
            catalogue.list(path)->set(row, 1, "g" + std::to_string(row));
            c.List1.addItem("Game " + std::to_string(row));
        }
    }
    void showPanels(bool marquee, bool snap, bool flyer, bool cabinet)
    {
        run.skin.showMarquee = marquee;
        run.skin.showSnap = snap;
        run.skin.showFlyer = flyer;
        run.skin.showCabinet = cabinet;
    }
    // A 3 x 3 strip of snaps, midRow 4, and no panels.
    void snapStrip()
    {
        showPanels(false, false, false, false);
        run.listType = "snap";
        run.midRow = 4;
        for (int k = 1; k < 9; ++k)
            c.xlist.load(k);
    }

    // Selects entry `index`, tells the step and returns the wished paths, less "/art/".
    std::vector<std::string> after(int index, int step)
    {
        c.List1.setListIndex(index);
        ahead.stepped(step);
        ahead.wish(c, { fx.images, settings, catalogue, run, home });
        std::vector<std::string> paths;
        for (const platform::PictureWish& wish : fx.images.wishes)
            paths.push_back(wish.path.starts_with("/art/") ? wish.path.substr(5) : wish.path);
        return paths;
    }

    // "snap/gN.png" for the games of each range, in the range's order: { 6, 3 } is 6, 5, 4, 3.
    static std::vector<std::string> snaps(const std::vector<std::pair<int, int>>& ranges)
    {
        std::vector<std::string> paths;
        for (const auto& [from, to] : ranges)
            for (int game = from; game != to + (from <= to ? 1 : -1); game += from <= to ? 1 : -1)
                paths.push_back("snap/g" + std::to_string(game) + ".png");
        return paths;
    }

    RuntimeFixture fx;
    runtime::Form& form = fx.plainForm("Main");
    browser::MainControls c { form };
    config::Settings settings;
    catalogue::Catalogue catalogue;
    config::RunState run;
    const std::string home = "/cab/";
    ReadAhead ahead;
};

// The selected game first, then the steps a held key makes (stopping at the ends), then the
// neighbours not yet wished for.
TEST_F(ReadAheadTest, WishesTheSelectionThenTheStepsAheadThenTheNeighbours)
{
    struct Case
    {
        const char* name;
        int index;
        int step;
        std::vector<int> games;
    };
    const Case cases[] = {
        { "down", 2, 1, { 3, 4, 5, 6, 7, 2 } },
        { "up", 7, -1, { 8, 7, 6, 5, 4, 9 } },
        { "down near the end stops there", 7, 1, { 8, 9, 10, 7 } },
        { "up on the first game", 0, -1, { 1, 2 } },
        { "a page lands on the last game", 2, 3, { 3, 6, 9, 10, 4, 2 } },
        { "a page up lands on the first game", 4, -3, { 5, 2, 1, 6, 4 } },
        { "no direction: both neighbours", 5, 0, { 6, 7, 5 } },
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        std::vector<std::pair<int, int>> ranges;
        for (int game : row.games)
            ranges.emplace_back(game, game);
        EXPECT_EQ(after(row.index, row.step), snaps(ranges));
    }
    EXPECT_EQ(after(-1, 1), std::vector<std::string> {}) << "no selection: nothing is wished, the old wishes go";
}

TEST_F(ReadAheadTest, EachShownPanelIsWishedInItsOrderWithItsPixelBox)
{
    showPanels(true, true, false, true);
    c.xCabinet.move(0, 0, 1500, 3000);
    after(4, 1);
    const auto& wishes = fx.images.wishes;
    ASSERT_EQ(wishes.size(), 18u); // the game, four ahead, one neighbour; the flyer is turned off
    const std::vector<std::string> first { wishes[0].path, wishes[1].path, wishes[2].path, wishes[3].path };
    EXPECT_EQ(first,
        (std::vector<std::string> { "/art/marquees/g5.png", "/art/snap/g5.png", "/art/cabinets/g5.png",
            "/art/marquees/g6.png" }));
    EXPECT_EQ(wishes[2].box, (runtime::PixelSize { 100, 200 }));
    EXPECT_EQ(wishes[1].box, (runtime::PixelSize { runtime::twipsToPixels(c.xScreen.width()),
                                 runtime::twipsToPixels(c.xScreen.height()) }));
}

TEST_F(ReadAheadTest, ANewListForgetsTheDirection)
{
    after(2, 1);
    settings.artDir[2] = "/art2/";
    setGames(2, 10);
    run.curPath = 2;
    EXPECT_EQ(after(2, 1) /* told again: still the first wish on the new list */,
        (std::vector<std::string> { "/art2/snap/g3.png", "/art2/snap/g4.png", "/art2/snap/g2.png" }));
    EXPECT_EQ(after(3, 1).size(), 6u) << "the next step has its direction again";
}

// Programs carry their own folder and an extension that the picture's replaces, with blanks trimmed
// for the marquee and the snap only; the Ultra 64 list sends one game to a folder of its own; a
// relative folder lies below the program's folder.
TEST_F(ReadAheadTest, ProgramsAndTheUltra64ListHaveTheirOwnFolderRules)
{
    showPanels(true, true, true, false);
    run.curPath = config::kExtrasPath;
    c.List1.clear();
    const char* programs[][2] = { { "Pinball.exe", "/p/" }, { "Tetris.exe ", "/t/" } };
    for (int row = 1; row <= 2; ++row) {
        catalogue.extras.set(row, 1, programs[row - 1][0]);
        catalogue.extras.set(row, 3, programs[row - 1][1]);
        c.List1.addItem(programs[row - 1][0]);
    }
    EXPECT_EQ(after(0, 0),
        (std::vector<std::string> { "/p/marquees/Pinball.png", "/p/snap/Pinball.png", "/p/flyers/Pinball.png",
            "/t/marquees/Tetris.png", "/t/snap/Tetris.png", "/t/flyers/Tetris..png" }));

    run.curPath = config::kU64Path;
    settings.u64Dir = "/ki/";
    settings.u64Dir2 = "u64\\";
    showPanels(false, true, false, false);
    c.List1.clear();
    for (const char* game : { "Killer Instinct", "Mario Kart" }) {
        catalogue.list(config::kU64Path)->set(c.List1.listCount() + 1, 1, game);
        c.List1.addItem(game);
    }
    EXPECT_EQ(after(1, 0), (std::vector<std::string> { "/cab/u64/snap/Mario Kart.png", "/ki/snap/Killer Instinct.png" }));
}

// The cells on screen first, then each step's cells at the leading edge, with the names unchanged.
TEST_F(ReadAheadTest, APictureStripWishesTheCellsTheNextStepsBringIn)
{
    snapStrip();
    setGames(1, 30);
    // Selected game 11 shows games 7 to 15.
    EXPECT_EQ(after(10, 1), snaps({ { 7, 15 }, { 16, 19 }, { 6, 6 } }));
    EXPECT_EQ(after(10, -1), snaps({ { 7, 15 }, { 6, 3 }, { 16, 16 } }));
    EXPECT_EQ(after(10, 4), snaps({ { 7, 15 }, { 16, 30 }, { 6, 6 } })) << "four pages, to the list's end";
    EXPECT_EQ(after(1, 1), snaps({ { 1, 10 } })) << "no cells before the first game";
    EXPECT_EQ(fx.images.wishes[0].box, (runtime::PixelSize { runtime::twipsToPixels(c.xlist(4).width()),
                                           runtime::twipsToPixels(c.xlist(4).height()) }));

    // A program's cells come from the selected program's folder, so its neighbour's are new cells.
    run.curPath = config::kExtrasPath;
    c.List1.clear();
    for (int row = 1; row <= 2; ++row) {
        catalogue.extras.set(row, 1, "p" + std::to_string(row) + ".exe");
        catalogue.extras.set(row, 3, "/x" + std::to_string(row) + "/");
        c.List1.addItem("p");
    }
    EXPECT_EQ(after(0, 0),
        (std::vector<std::string> { "/x1/snap/p1.exe.png", "/x1/snap/p2.exe.png", "/x2/snap/p1.exe.png",
            "/x2/snap/p2.exe.png" }));
}

} // namespace
} // namespace ombrel::test
