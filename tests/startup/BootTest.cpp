// The start of the program and what missing or broken files lead to: the settings file (the one
// failure that stops the start), the saved state, the master list, the Extras list, the intro film.
#include "CabinetFixture.h"

#include "catalogue/Navigation.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/MediaView.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ombrel::test {
namespace {

class BootTest : public ::testing::Test {
protected:
    bool traced(const std::string& line) const
    {
        return std::find(cab.trace.lines.begin(), cab.trace.lines.end(), line) != cab.trace.lines.end();
    }
    bool tracedStartingWith(const std::string& prefix) const
    {
        return std::any_of(cab.trace.lines.begin(), cab.trace.lines.end(),
            [&](const std::string& line) { return line.rfind(prefix, 0) == 0; });
    }
    std::string middleRow()
    {
        auto& main = cab.main();
        auto* row = main.c.ll.get(cab.cabinet().run.midRow);
        return row ? row->caption() : std::string("<no row>");
    }

    CabinetFixture cab;
};

struct BrokenSettings {
    const char* name;
    int keepLines; // lines of a sound file kept; -1: no file at all
    const char* message; // what the message must say
};

class BrokenSettingsTest : public BootTest, public ::testing::WithParamInterface<BrokenSettings> { };

TEST_P(BrokenSettingsTest, StopTheStartWithOneClearMessageOnScreenAndStandardError)
{
    const auto& row = GetParam();
    cab.write({});
    if (row.keepLines < 0) {
        std::filesystem::remove(cab.home.root() / "ombrel.ini");
    } else {
        std::string text = cab.home.read("ombrel.ini");
        size_t at = 0;
        for (int i = 0; i < row.keepLines && at != std::string::npos; ++i)
            at = text.find("\r\n", at) == std::string::npos ? std::string::npos : text.find("\r\n", at) + 2;
        cab.home.write("ombrel.ini", text.substr(0, at));
    }
    ::testing::internal::CaptureStderr();
    cab.boot();
    std::string err = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(err.find(row.message), std::string::npos) << err;
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << "one line on standard error";

    auto& blanker = cab.forms().form("blanker");
    auto* label = dynamic_cast<runtime::Label*>(blanker.find("lblError"));
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(blanker.visible());
    EXPECT_NE(label->caption().find(row.message), std::string::npos);
    EXPECT_FALSE(cab.showing("Main")) << "nothing of the cabinet starts";
    EXPECT_FALSE(traced("media mpIntro play"));

    cab.runFor(5000);
    EXPECT_TRUE(cab.loop.quitting());
    EXPECT_EQ(cab.loop.exitCode(), 1);
}

INSTANTIATE_TEST_SUITE_P(Rows, BrokenSettingsTest,
    ::testing::Values(BrokenSettings { "missing", -1, "ombrel.ini" },
        // Cut inside path block 20: a plain read finds the end of the file.
        BrokenSettings { "endsInTheBlocks", 158, "ombrel.ini line" },
        // ResX= is the 16th closing line: a number must stand there.
        BrokenSettings { "endsBeforeTheScreenSize", 175, "ombrel.ini line" }),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(BootTest, WithoutTheLastLineTheStartGoesOnAndPowerOffIsFalse)
{
    cab.write({});
    std::string text = cab.home.read("ombrel.ini");
    text.erase(text.rfind("\r\n", text.size() - 3) + 2);
    cab.home.write("ombrel.ini", text);
    cab.boot();
    EXPECT_TRUE(cab.showing("Main"));
    EXPECT_FALSE(cab.cabinet().settings.powerOff);
}

TEST_F(BootTest, WithoutAFilmTheBrowserIsShownAtOnceAndComesUpOnItsLastGame)
{
    cab.write({});
    cab.boot();
    EXPECT_TRUE(traced("form show Main"));
    EXPECT_FALSE(tracedStartingWith("media mpIntro play"));
    EXPECT_TRUE(cab.active("Main"));
    EXPECT_FALSE(cab.showing("blanker"));
    // ombrel.cfg of the fixture: list 1, index 0.
    EXPECT_EQ(cab.curPath(), 1);
    EXPECT_EQ(cab.listIndex(), 0);
}

TEST_F(BootTest, AKeyDuringTheFilmEndsItAndTheBootFollowsAsAfterItsEnd)
{
    cab.write({});
    cab.home.write("intro.mpeg", "film"); // the fakes play any file for a second
    cab.boot();
    // boot() has run 2.5 s: the film's own end came at 1 s.
    EXPECT_TRUE(traced("media mpIntro end"));
    EXPECT_TRUE(cab.active("Main"));

    CabinetFixture again;
    again.write({});
    again.home.write("intro.mpeg", "film");
    again.start();
    again.runFor(300);
    EXPECT_FALSE(again.showing("Main"));
    again.press(32);
    again.runFor(20);
    EXPECT_TRUE(again.showing("Main")) << "a key stops the film at once";
    auto lines = again.trace.lines;
    EXPECT_NE(std::find(lines.begin(), lines.end(), "media mpIntro stop"), lines.end());
    EXPECT_EQ(std::find(lines.begin(), lines.end(), "media mpIntro end"), lines.end());
}

TEST_F(BootTest, WithoutSavedStateNoListIsShownUntilThePlayerMoves)
{
    cab.write({});
    std::filesystem::remove(cab.home.root() / "ombrel.cfg");
    cab.boot();
    auto& main = cab.main();
    EXPECT_EQ(cab.curPath(), 0);
    EXPECT_EQ(main.c.List1.listCount(), 0);
    EXPECT_EQ(main.c.lblPath.caption(), "");
    main.nav.gNextPath();
    EXPECT_EQ(cab.curPath(), 1);
    EXPECT_EQ(main.c.List1.listCount(), 100);
}

TEST_F(BootTest, WithoutTheMasterListNoListIsLoadedAndTheMessageShows)
{
    cab.write({});
    std::string before = cab.home.read("l 1.lst");
    std::filesystem::remove(cab.home.root() / "gamelist.lst");
    cab.boot();
    cab.runFor(2000);
    EXPECT_EQ(cab.main().c.List1.listCount(), 0);
    EXPECT_EQ(middleRow(), catalogue::kNoRomsMessage);
    EXPECT_EQ(cab.home.read("l 1.lst"), before) << "a list file that holds games is never emptied";
}

TEST_F(BootTest, WithoutExtrasTheWalkNeverStopsOnTheExtrasList)
{
    cab.write({ .listSizes = { 5, 0, 2 } });
    cab.boot();
    auto& main = cab.main();
    EXPECT_TRUE(cab.cabinet().catalogue.extras.at(1, 1).empty());
    main.nav.gPrevPath(); // from list 1 backwards: 27 and 4..20 are empty, 3 has games
    EXPECT_EQ(cab.curPath(), 3);
    main.nav.gNextPath(); // 4..27 are empty or off, then 1
    EXPECT_EQ(cab.curPath(), 1);
}

TEST_F(BootTest, FailuresPassedOverAreLoggedOnceWithTheirFile)
{
    cab.write({ .keyFile = false });
    std::filesystem::remove(cab.home.root() / "l 2.lst");
    cab.home.write("l 2.lst/not a list", "");
    cab.boot();
    cab.main().nav.loadLists(); // the same failures again, from the same places
    EXPECT_TRUE(cab.cabinet().catalogue.list(2)->at(1, 1).empty());
    EXPECT_EQ(cab.cabinet().keys.keyConfig, 9) << "without a key map, Tab opens the menu";
    const std::string log = cab.home.read("ombrel.log");
    const std::string keyFile = "omkeys.cfg: cannot open " + cab.home.path() + "omkeys.cfg (";
    for (const std::string& cause : { keyFile, std::string("l 2.lst: cannot be read (") }) {
        size_t at = log.find(cause);
        EXPECT_NE(at, std::string::npos) << log;
        EXPECT_EQ(log.find(cause, at + 1), std::string::npos) << log;
    }
    // Standard error has the same lines, each behind "ombrel: ".
    const auto lines = static_cast<size_t>(std::count(log.begin(), log.end(), '\n'));
    EXPECT_EQ(cab.failureEcho.str().size(), log.size() + lines * std::string("ombrel: ").size());
    EXPECT_FALSE(tracedStartingWith("file write ombrel.log")) << "the log is no effect of the trace";
}

TEST_F(BootTest, ALastIndexPastTheListLeavesTheSelectionOnTheFirstGame)
{
    cab.write({ .listSizes = { 3 } });
    std::string cfg = cab.home.read("ombrel.cfg");
    // Line 7 is lastIndex: 3 equals the list's length, which the list box refuses.
    size_t at = 0;
    for (int i = 0; i < 6; ++i)
        at = cfg.find("\r\n", at) + 2;
    cfg.replace(at, cfg.find("\r\n", at) - at, "3");
    cab.home.write("ombrel.cfg", cfg);
    cab.boot();
    EXPECT_EQ(cab.listIndex(), 0);
}

} // namespace
} // namespace ombrel::test
