// The preview panels: which file each kind looks for in each list, how the panels show, load and hide
// as the selection moves, what curPic ends up holding, and the click that goes with each refresh.
#include "RuntimeFixture.h"
#include "TempHome.h"

#include "browser/MainControls.h"
#include "browser/PreviewPanels.h"
#include "platform/fake/FakeMediaPlayer.h"
#include "runtime/Form.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace ombrel::test {
namespace {

constexpr uint32_t kBack = 0x203040;

// A browser form with its panels hidden as designed, over a program folder that holds the skin "Skin"
// with its four default pictures, and list 1 with its art in "art/" below the program's folder.
class PreviewPanelsTest : public ::testing::Test
{
protected:
    PreviewPanelsTest()
    {
        run.themesDir = home.path() + "omthemes";
        saved.curSkin = "\\Skin\\";
        run.skin.showMarquee = run.skin.showSnap = run.skin.showFlyer = run.skin.showCabinet = true;
        for (const char* name : { "marquee32.jpg", "screen32.jpg", "flyer32.jpg", "cabinet32.jpg" })
            home.write(std::string("omthemes/Skin/") + name, pngHeader(32, 32));
        settings.artDir[1] = "art\\"; // below the program's folder
    }

    void picture(const std::string& relative) { home.write(relative, pngHeader(8, 6)); }

    // List `path` holds these games (for the Extras: program, folder), and List1 shows them.
    void list(int path, const std::vector<std::vector<std::string>>& rows)
    {
        run.curPath = path;
        catalogue::Table& table = *catalogue.list(path);
        table.clear();
        c.List1.clear();
        for (size_t i = 0; i < rows.size(); ++i) {
            const int row = static_cast<int>(i) + 1;
            table.set(row, 1, rows[i][0]);
            if (rows[i].size() > 1)
                table.set(row, 3, home.path() + rows[i][1]);
            c.List1.addItem(rows[i][0]);
        }
    }

    void refresh(int index)
    {
        c.List1.setListIndex(index);
        browser::cabRefresh(
            c, { mpFX, fx.files, saved, run, keyExit, settings, catalogue, schemeBack, homePath });
    }

    void hideAll()
    {
        for (runtime::PictureControl* panel : { &c.xMarquee, &c.xScreen, &c.xFlyer, &c.xCabinet }) {
            panel->clear();
            panel->setVisible(false);
        }
    }

    // The panels in the order marquee, snap, flyer, cabinet: the file each holds, below the program's
    // folder ("-" for none), in brackets while hidden.
    std::string panels() const
    {
        std::string out;
        for (const runtime::PictureControl* panel : { &c.xMarquee, &c.xScreen, &c.xFlyer, &c.xCabinet }) {
            std::string file = panel->fileName().empty() ? "-" : relative(panel->fileName());
            out += (out.empty() ? "" : " ") + (panel->visible() ? file : "(" + file + ")");
        }
        return out;
    }
    std::string relative(const std::string& path) const
    {
        return path.starts_with(home.path()) ? path.substr(home.path().size()) : path;
    }

    TempHome home;
    const std::string homePath = home.path();
    RuntimeFixture fx;
    runtime::Form& form = fx.plainForm("Main");
    browser::MainControls c { form };
    platform::fake::FakeMediaPlayer mpFX { "mpFX", fx.loop, fx.trace,
        [this](const std::string& path) { return fx.files.fileExists(path) ? 1.0 : -1.0; }, home.path() };
    config::SavedState saved;
    config::RunState run;
    config::Settings settings;
    catalogue::Catalogue catalogue;
    std::optional<int16_t> keyExit = 27;
    uint32_t schemeBack = kBack;
};

// The names as the panels and the existence test join them, below the program's folder "/cab/" unless the
// folder is absolute. (A program's extension, cut with or without blanks, is on the read-ahead's tests.)
TEST(PictureFileTest, NamesAndFoldersAsEachPanelJoinsThem)
{
    struct Row
    {
        const char* scanDir;
        const char* name;
        int path;
        bool trim;
        const char* expected; // "" when the name cannot be worked out
    };
    const Row rows[] = {
        { "art\\snap\\", "galaga", 1, false, "/cab/art\\snap\\galaga.png" },
        { "/art/snap/", "galaga", 1, false, "/art/snap/galaga.png" },
        { " /art/snap/", "galaga ", 5, false, "/cab/ /art/snap/galaga .png" },
        { " /art/snap/", "galaga ", 5, true, "/art/snap/galaga.png" },
        { "art\\snap\\", "", 1, false, "/cab/art\\snap\\.png" }, // an empty list
        { "/x/", "Flipper.déj", 27, false, "/x/Flipper.png" }, // four letters, not four bytes
        { "", "p.x", 27, false, "" },
        { "   ", "", 27, true, "" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.scanDir) + "|" + row.name + "|" + std::to_string(row.trim));
        if (*row.expected)
            EXPECT_EQ(browser::pictureFile("/cab/", row.scanDir, row.name, row.path, row.trim), row.expected);
        else
            EXPECT_THROW(
                browser::pictureFile("/cab/", row.scanDir, row.name, row.path, row.trim), std::out_of_range);
    }
}

// Down through games with every picture, a marquee only, a snap that is no picture, and back: every row of
// the panels' state table, with curPic following the last kind that had a file.
TEST_F(PreviewPanelsTest, PanelsFollowTheSelection)
{
    run.skin.showCabinet = false; // the skin has no cabinet: it loads hidden
    list(1, { { "all" }, { "marquee" }, { "none" }, { "broken" }, { "snap" } });
    for (const char* folder : { "marquees", "snap", "flyers", "cabinets" })
        picture(std::string("art/") + folder + "/all.png");
    picture("art/marquees/marquee.png");
    home.write("art/snap/broken.png", "not a picture");
    picture("art/snap/snap.png");
    home.write("omthemes/Skin/flyer32.jpg", "not a picture either"); // the flyer hides all the same

    struct Step
    {
        int index;
        uint32_t back; // the scheme's colour at this step
        const char* panels;
        const char* curPic;
    };
    const Step steps[] = {
        { 0, kBack, "art/marquees/all.png art/snap/all.png art/flyers/all.png (art/cabinets/all.png)",
            "art/cabinets/all.png" },
        { 1, 1,
            "art/marquees/marquee.png (omthemes/Skin/screen32.jpg) (art/flyers/all.png) "
            "(art/cabinets/all.png)",
            "art/marquees/marquee.png" },
        // Shown again with the colour of now; the snap that cannot be read leaves the default in place.
        // (A game with no picture at all, between the two, is the scenario preview-panels.)
        { 3, 3,
            "(omthemes/Skin/marquee32.jpg) omthemes/Skin/screen32.jpg (art/flyers/all.png) "
            "(art/cabinets/all.png)",
            "omthemes/Skin/screen32.jpg" },
        { 4, 4, "(omthemes/Skin/marquee32.jpg) art/snap/snap.png (art/flyers/all.png) (art/cabinets/all.png)",
            "art/snap/snap.png" },
        { 0, 5, "art/marquees/all.png art/snap/all.png art/flyers/all.png (art/cabinets/all.png)",
            "art/cabinets/all.png" },
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.index);
        schemeBack = step.back;
        const uint32_t snapBack = c.xScreen.backColor();
        const bool snapWasShown = c.xScreen.visible();
        refresh(step.index);
        EXPECT_EQ(panels(), step.panels);
        EXPECT_EQ(relative(run.curPic), step.curPic);
        // The colour is set when a panel comes into view, and only then.
        EXPECT_EQ(c.xScreen.backColor(), c.xScreen.visible() && !snapWasShown ? step.back : snapBack);
        EXPECT_EQ(c.xCabinet.backColor(), 0u);
        EXPECT_EQ(relative(run.scanDir), "art\\cabinets\\");
    }
}

// Where each list looks, and the list numbers and rows that have no pictures: their tests and loads are
// passed over, so fileFound and the panels keep what the step before left.
TEST_F(PreviewPanelsTest, EachListLooksInItsOwnFolders)
{
    settings.u64Dir = home.path() + "u64a\\";
    settings.u64Dir2 = home.path() + "u64b\\";
    settings.artDir[0] = home.path() + "nolist\\";
    picture("u64a/snap/Killer Instinct.png");
    picture("u64b/snap/Wave Race.png");
    picture("u64a/snap/Wave Race.png"); // not where the list looks for it
    picture("one/snap/Pinball.png");
    picture("two/snap/Racer.png");
    picture("two/flyers/Racer.png");
    picture("art/snap/Galaga.png");
    picture("art/marquees/Galaga.png");
    picture("art/marquees/Galaga .png");
    picture("art/snap/Galaga .png");
    picture("art/flyers/Galaga .png");

    struct Row
    {
        const char* name;
        int path;
        std::vector<std::vector<std::string>> games;
        int index;
        const char* panels;
        const char* scanDir; // after the last kind
    };
    const Row rows[] = {
        { "Ultra 64, its one game in the first folder", 23, { { "Wave Race" }, { "Killer Instinct" } }, 1,
            "(-) u64a/snap/Killer Instinct.png (-) (-)", "u64a\\cabinets\\" },
        { "Ultra 64, the rest in the second", 23, { { "Wave Race" }, { "Killer Instinct" } }, 0,
            "(-) u64b/snap/Wave Race.png (-) (-)", "u64b\\cabinets\\" },
        { "Extras, each in its own folder, the extension cut", 27,
            { { "Pinball.exe", "one\\" }, { "Racer.com", "two\\" } }, 0, "(-) one/snap/Pinball.png (-) (-)",
            "one\\cabinets\\" },
        { "Extras, the second entry", 27, { { "Pinball.exe", "one\\" }, { "Racer.com", "two\\" } }, 1,
            "(-) two/snap/Racer.png two/flyers/Racer.png (-)", "two\\cabinets\\" },
        // A trailing blank: found as written, loaded trimmed by marquee and snap, as written by the flyer.
        { "trailing blank", 1, { { "Galaga " } }, 0,
            "art/marquees/Galaga.png art/snap/Galaga.png art/flyers/Galaga .png (-)", "art\\cabinets\\" },
        { "empty list", 1, {}, -1, "(-) (-) (-) (-)", "art\\cabinets\\" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        hideAll();
        list(row.path, row.games);
        refresh(row.index);
        EXPECT_EQ(panels(), row.panels);
        EXPECT_EQ(relative(run.scanDir), row.scanDir);
    }

    // Galaga shown, then asked again with no list, list 0 and a row past the catalogue: nothing is tested, so
    // the panels act on what the test before found. Nothing is loaded either, and curPic reads back each
    // panel's file as it is, the empty one of the last panel too.
    struct Odd
    {
        const char* name;
        int path;
        bool pastEnd; // the selection is the row after the catalogue's last
        bool fileFound; // as the test before left it
        const char* panels;
        const char* scanDir;
    };
    const char* kept = "art/marquees/Galaga.png art/snap/Galaga.png - -"; // and the two others shown
    const Odd odd[] = {
        { "list 0 after a find", 0, false, true, kept, "nolist\\cabinets\\" },
        { "list 0 after a miss", 0, false, false,
            "(omthemes/Skin/marquee32.jpg) (omthemes/Skin/screen32.jpg) (-) (-)", "nolist\\cabinets\\" },
        { "list 28 after a find", 28, false, true, kept, "art\\cabinets\\" },
        { "row past the catalogue", 1, true, true, kept, "art\\cabinets\\" },
        { "row past the Extras", 27, true, true, kept, "art\\cabinets\\" },
    };
    for (const Odd& row : odd) {
        SCOPED_TRACE(row.name);
        hideAll();
        list(1, { { "Galaga" } });
        refresh(0);
        ASSERT_EQ(panels(), "art/marquees/Galaga.png art/snap/Galaga.png (-) (-)");
        const std::string curPic = run.curPic;
        run.fileFound = row.fileFound;
        if (row.pastEnd) {
            while (c.List1.listCount() <= catalogue::kMaxGamesPerList)
                c.List1.addItem("more");
        }
        run.curPath = row.path;
        refresh(row.pastEnd ? catalogue::kMaxGamesPerList : 0); // the row after the last
        EXPECT_EQ(run.fileFound, row.fileFound);
        EXPECT_EQ(panels(), row.panels);
        EXPECT_EQ(relative(run.scanDir), row.scanDir);
        EXPECT_EQ(run.curPic, row.fileFound ? "" : curPic);
    }
}

// The click: none without a key map, and a sound that plays already goes on.
TEST_F(PreviewPanelsTest, ClicksUnlessUnsetOrBusy)
{
    home.write("omthemes/Skin/pop.mp3", "pop");
    home.write("omthemes/Skin/com.mp3", "start");
    list(1, {});
    // The key map, a game's start sound playing, and what the refresh plays.
    const std::tuple<std::optional<int16_t>, bool, std::vector<std::string>> rows[] = {
        { 27, false, { "media mpFX open omthemes/Skin/pop.mp3", "media mpFX play" } },
        { std::nullopt, false, {} }, { 27, true, {} } };
    for (const auto& [exitKey, playing, trace] : rows) {
        SCOPED_TRACE(std::to_string(exitKey.value_or(0)) + (playing ? " playing" : ""));
        keyExit = exitKey;
        mpFX.stop();
        if (playing) {
            mpFX.setFileName(home.path() + "omthemes/Skin/com.mp3");
            mpFX.play();
        }
        fx.trace.lines.clear();
        refresh(-1);
        EXPECT_EQ(fx.trace.lines, trace);
    }
}

} // namespace
} // namespace ombrel::test
