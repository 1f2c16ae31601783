// The start of the program and what missing or broken files lead to: the settings file (the one
// failure that stops the start), the saved state, the intro film.
#include "CabinetFixture.h"

#include "runtime/controls/Label.h"
#include "runtime/controls/MediaView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

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
    CabinetFixture cab;
};

// The settings file of the fixture, line by line, changed by edit and written back.
void editIni(TempHome& home, const std::function<void(std::vector<std::string>&)>& edit)
{
    std::vector<std::string> lines;
    const std::string text = home.read("ombrel.ini");
    for (size_t at = 0, end; (end = text.find("\r\n", at)) != std::string::npos; at = end + 2)
        lines.push_back(text.substr(at, end - at));
    edit(lines);
    std::string out;
    for (const std::string& line : lines)
        out += line + "\r\n";
    home.write("ombrel.ini", out);
}

struct BrokenSettings {
    const char* name;
    std::function<void(std::vector<std::string>&)> edit; // nullptr: no file at all
    const char* message; // the first problem, which the message must name
};

// What the player may do while the message stands: a key or a click on it ends the program at once;
// nothing else does, and nothing brings up the browser on the half-read settings.
struct InputDuringMessage {
    const char* name;
    std::function<void(CabinetFixture&)> give;
    bool endsAtOnce;
};

class BrokenSettingsTest : public ::testing::TestWithParam<BrokenSettings> { };

TEST_P(BrokenSettingsTest, StopTheStartWithTheFirstProblemUntilTheProgramEnds)
{
    const InputDuringMessage inputs[] = {
        { "nothing", [](CabinetFixture&) {}, false },
        { "a key", [](CabinetFixture& fx) { fx.press(vk::kEnter); }, true },
        { "a click on the message", [](CabinetFixture& fx) { fx.click("blanker"); }, true },
        { "a click on the backdrop", [](CabinetFixture& fx) { fx.click("background"); }, false },
        { "a joystick button", [](CabinetFixture& fx) { fx.joystick.set({ .buttons = 1 }); }, false },
    };
    const auto& row = GetParam();
    for (const auto& input : inputs) {
        SCOPED_TRACE(input.name);
        CabinetFixture fx;
        fx.write({});
        if (row.edit)
            editIni(fx.home, row.edit);
        else
            std::filesystem::remove(fx.home.root() / "ombrel.ini");
        ::testing::internal::CaptureStderr();
        fx.start();
        fx.runFor(1000);
        const std::string err = ::testing::internal::GetCapturedStderr();
        EXPECT_NE(err.find(row.message), std::string::npos) << err;
        EXPECT_NE(err.find("ombrel --check"), std::string::npos) << err;
        EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << "one line on standard error";
        auto* label = dynamic_cast<runtime::Label*>(fx.forms().form("blanker").find("lblError"));
        ASSERT_NE(label, nullptr);
        EXPECT_TRUE(fx.active("blanker"));
        EXPECT_NE(label->caption().find(row.message), std::string::npos) << label->caption();

        input.give(fx);
        if (!input.endsAtOnce) {
            fx.runFor(3999);
            EXPECT_FALSE(fx.loop.quitting());
            EXPECT_TRUE(fx.showing("blanker")) << "the message stays until the end";
            fx.runFor(1);
        }
        EXPECT_TRUE(fx.loop.quitting());
        EXPECT_EQ(fx.loop.exitCode(), 1);
        EXPECT_EQ(fx.trace.lines.back(), "program end");
        for (const std::string& line : fx.trace.lines)
            EXPECT_EQ(line.find("Main"), std::string::npos) << "nothing of the cabinet starts: " << line;
        EXPECT_EQ(std::count(fx.trace.lines.begin(), fx.trace.lines.end(), "media mpIntro play"), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, BrokenSettingsTest,
    ::testing::Values(BrokenSettings { "missing", nullptr, "ombrel.ini: cannot open" },
        BrokenSettings { "endsInTheBlocks", [](auto& lines) { lines.resize(158); },
            "ombrel.ini line 159: the file ends where EmuFolder= of path 20" },
        BrokenSettings { "lastTwoLinesMissing", [](auto& lines) { lines.resize(180); },
            "ombrel.ini line 181: the file ends where Bits=" },
        // The rest of the rate's line is read as the next line, and ResX= gets a word: the comma is
        // what to mend, not the line where the reading broke.
        BrokenSettings { "strayComma", [](auto& lines) { lines.at(172) += ",ms"; },
            "ombrel.ini line 173: a comma ends the value here" },
        BrokenSettings { "commentBeforeAPlainRead",
            [](auto& lines) { lines.insert(lines.begin() + 17, "* path 3 runs the same emulator"); },
            "ombrel.ini line 18: a comment stands where Exec= (emuExe(3)) is read" }),
    [](const auto& info) { return std::string(info.param.name); });

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
    for (const std::string& cause : { keyFile, std::string("l 2.lst: cannot be created") }) {
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
    // Line 7 is lastIndex: 3 equals the list's length, which the list box refuses.
    cab.home.write("ombrel.cfg", "\"\\Skin\\\"\r\n300\r\n0\r\n0\r\n1\r\n#FALSE#\r\n3\r\n1\r\n0\r\n");
    cab.boot();
    EXPECT_EQ(cab.listIndex(), 0);
}

} // namespace
} // namespace ombrel::test
