// The skin file: what each shape of a hand-edited skin.ini reads as, what a first and a later load keep
// of what could not be read, and where setRes, MoveNav and makeVis put the browser's controls.
#include "RuntimeFixture.h"
#include "TempHome.h"

#include "browser/MainControls.h"
#include "browser/SkinFile.h"
#include "browser/SkinLayout.h"
#include "runtime/Form.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

namespace ombrel::test {
namespace {

using config::RunState;

// A skin with a value of its own in every place, one line each as the file lays them out.
// clang-format off
const std::vector<std::string> kGoodLines = {
    "1152,2856,1848,1332", "#TRUE#", "720,120,2124,2880", "#FALSE#", "696,5424,2124,2880", "#TRUE#",
    "348,2748,2040,504", "#TRUE#", "3960,120,7428,1632", "3", "list", "1812,1572", "12,3504", "#TRUE#",
    "3720,3366", "#FALSE#", "60", "2", "2640,3360,1092,1452", "#TRUE#",
};

config::SkinValues goodValues()
{
    return { .xScreen = { 1152, 2856, 1848, 1332 }, .showSnap = true, .xCabinet = { 720, 120, 2124, 2880 },
        .xFlyer = { 696, 5424, 2124, 2880 }, .showFlyer = true, .xMarquee = { 348, 2748, 2040, 504 },
        .showMarquee = true, .Shape1 = { 3960, 120, 7428, 1632 }, .listCols = 3, .xlistWidth = 1812,
        .xlistHeight = 1572, .lblPathTop = 12, .lblPathLeft = 3504, .showPath = true, .lblNavTop = 3720,
        .lblNavLeft = 3366, .stripGap = 60, .rowAlign = 2,
        .xlogo = { .top = 2640, .left = 3360, .width = 1452, .height = 1092 } };
}
// clang-format on

// The good skin with some of its lines replaced (an index past the end appends), cut after a number of
// lines (-1: all), joined by the line end given.
std::string skinText(std::vector<std::pair<size_t, std::string>> edits = {}, int keepLines = -1,
    const std::string& lineEnd = "\n")
{
    std::vector<std::string> lines = kGoodLines;
    for (auto& [index, text] : edits) {
        if (index >= lines.size())
            lines.resize(index + 1);
        lines[index] = text;
    }
    if (keepLines >= 0)
        lines.resize(static_cast<size_t>(keepLines));
    std::string bytes;
    for (const std::string& line : lines)
        bytes += line + lineEnd;
    return bytes;
}

TEST(SkinFileTest, ShapesOfAHandEditedFile)
{
    // first: read on a first load; again: read over the good skin's values, as a later load of Main
    using Check = std::function<void(const RunState& first, const RunState& again)>;
    struct Row
    {
        const char* name;
        std::string bytes;
        size_t valuesRead;
        const char* failure; // a part of the message, "" when the file was read in full
        Check check = nullptr;
    };
    const config::SkinValues good = goodValues();
    const Row rows[] = {
        { "CR LF, blanks around the values, lines past the last not read",
            skinText({ { 0, " 1152 , 2856 ,1848,1332 " }, { 20, "junk,#FALSE#" } }, -1, "\r\n"), 41, "",
            [&](auto& first, auto&) {
                EXPECT_EQ(first.skin, good);
                EXPECT_EQ(first.listType, "list");
                EXPECT_TRUE(first.showLogo);
            } },
        { "decimal points; whole numbers round half to even",
            skinText({ { 0, "1152.5,2856.25,1848,1332" }, { 9, "2.5" }, { 16, "61.5" } }), 41, "",
            [](auto& first, auto&) {
                EXPECT_EQ(first.skin.xScreen.top, 1152.5);
                EXPECT_EQ(first.skin.xScreen.left, 2856.25);
                EXPECT_EQ(first.skin.listCols, 2);
                EXPECT_EQ(first.skin.stripGap, 62);
            } },
        { "empty column and kind lines", skinText({ { 9, "" }, { 10, "" } }), 41, "",
            [](auto& first, auto& again) {
                EXPECT_EQ(first.skin.listCols, 0);
                EXPECT_EQ(again.listType, "");
            } },
        // The comma in line 17 gives the alignment 1, and each later value takes the place of the next:
        // the logo's top is line 18's value and its flag the number that was meant for its width.
        { "a comma shifts every later value", skinText({ { 16, "60,1" } }), 41, "",
            [](auto& first, auto&) {
                EXPECT_EQ(first.skin.rowAlign, 1);
                EXPECT_EQ(first.skin.xlogo,
                    (config::SkinBox { .top = 2, .left = 2640, .width = 1092, .height = 3360 }));
                EXPECT_TRUE(first.showLogo);
            } },
        { "empty file", "", 0, "line 1: xScreen.Top: the file ends before it" },
        { "ends after line 9", skinText({}, 9), 24, "line 10: listCols: the file ends",
            [&](auto& first, auto& again) {
                EXPECT_EQ(first.skin.Shape1, good.Shape1);
                EXPECT_EQ(
                    std::tie(first.skin.listCols, first.listType, first.showLogo), std::tuple(0, "", false));
                EXPECT_EQ(std::tie(again.skin.listCols, again.listType, again.showLogo),
                    std::tuple(3, "list", true));
            } },
        // The reading ends at the bad value: nothing after it is taken, though the rest is good.
        { "a word where a number belongs", skinText({ { 0, "1,2,3,4" }, { 4, "696,5424,abc,2880" } }), 12,
            "line 5: xFlyer.Width: \"abc\" is not a number",
            [&](auto& first, auto& again) {
                EXPECT_EQ(first.skin.xFlyer, (config::SkinBox { .top = 696, .left = 5424 }));
                EXPECT_EQ(again.skin.xScreen, (config::SkinBox { 1, 2, 3, 4 }));
                EXPECT_EQ(again.skin.xFlyer.width, good.xFlyer.width);
                EXPECT_EQ(again.skin.xlogo, good.xlogo);
            } },
        { "flags: any case and numbers, not other words",
            skinText({ { 1, "#false#" }, { 3, "7" }, { 5, "True" } }), 14,
            "line 6: showFlyer: \"True\" is not #TRUE# or #FALSE#",
            [](auto& first, auto& again) {
                EXPECT_FALSE(first.skin.showSnap);
                EXPECT_TRUE(first.skin.showCabinet);
                EXPECT_TRUE(again.skin.showFlyer);
            } },
        { "a column count beyond a whole number", skinText({ { 9, "40000" } }), 24,
            "listCols: \"40000\" is not between" },
        { "a position beyond any screen", skinText({ { 0, "1e39,0,0,0" } }), 0,
            "line 1: xScreen.Top: the number is too large" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        RunState first;
        const browser::SkinRead read = browser::readSkin(row.bytes, first);
        EXPECT_EQ(read.values.size(), row.valuesRead);
        EXPECT_EQ(read.values.size() + read.unread.size(), 41u);
        if (*row.failure)
            EXPECT_NE(read.failure.find(row.failure), std::string::npos) << read.failure;
        else
            EXPECT_EQ(read.failure, "");
        RunState again;
        browser::readSkin(skinText(), again);
        browser::readSkin(row.bytes, again);
        if (row.check)
            row.check(first, again);
    }
    RunState none;
    none.skin.listCols = 5;
    EXPECT_EQ(browser::readSkin(nullptr, none).unread.size(), 41u);
    EXPECT_EQ(none.skin.listCols, 5);
}

// What --check tells the owner: each value with the line it came from, where it belongs if a comma moved
// it, and what was not read.
TEST(SkinFileTest, ReportGivesEachValueItsLine)
{
    TempHome home;
    platform::DiskFiles files;
    home.write("omthemes/A/skin.ini", skinText({ { 16, "60,1" } }));
    home.write("omthemes/B/SKIN.INI", skinText({ { 4, "696,5424,abc,2880" } }));
    const auto a = browser::skinReport(files, home.path() + "omthemes/A/");
    ASSERT_EQ(a.size(), 41u);
    EXPECT_EQ(a.front(), "skin.ini line 1: xScreen.Top = 1152");
    EXPECT_EQ(a[25], "skin.ini line 11: listType = \"list\"");
    EXPECT_EQ(a[35], "skin.ini line 17: rowAlign = 1 (its place is line 18)");
    EXPECT_EQ(a.back(), "skin.ini line 19: showLogo = #TRUE# (its place is line 20)");

    const auto b = browser::skinReport(files, home.path() + "omthemes/B/");
    ASSERT_EQ(b.size(), 13u);
    EXPECT_TRUE(b.back().starts_with(
        "skin.ini line 5: xFlyer.Width: \"abc\" is not a number; not read: xFlyer.Width, xFlyer.Height, "))
        << b.back();

    const auto missing = browser::skinReport(files, home.path() + "omthemes/C/");
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_NE(missing[0].find("omthemes/C/skin.ini cannot be opened"), std::string::npos) << missing[0];
}

// setRes runs every placing step whatever the file gives: without a skin folder or a skin.ini everything
// stands at 0 with no size and hidden (a first load holds nothing else), and the owner reads why in one
// line.
TEST(SkinLayoutTest, ControlsGoWhereTheSkinSays)
{
    TempHome home;
    RuntimeFixture fx;
    runtime::Form& form = fx.plainForm("Main");
    browser::MainControls c { form };
    RunState run;
    browser::StripLayout strip;
    home.write("omthemes/Empty/readme.txt", "no skin here");
    home.write("omthemes/Good/skin.ini", skinText());
    const std::tuple<const char*, const char*, config::SkinValues> rows[] = {
        { "Gone/", "the skin folder ", {} },
        { "Empty/", "omthemes/Empty/skin.ini cannot be opened", {} },
        { "Good/", "", goodValues() },
    };
    for (const auto& [skin, message, s] : rows) {
        SCOPED_TRACE(skin);
        const std::string why = browser::setRes(c, run, strip, home.path() + "omthemes/" + skin, fx.files);
        EXPECT_TRUE(*message ? why.find(message) != std::string::npos : why.empty()) << why;
        const std::pair<const runtime::Control*, config::SkinBox> boxes[] = {
            { &c.xScreen, s.xScreen }, { &c.xCabinet, s.xCabinet }, { &c.xFlyer, s.xFlyer },
            { &c.xMarquee, s.xMarquee }, { &c.Shape1, s.Shape1 }, { &c.xlogo, s.xlogo },
            { &c.xlist(0),
                { s.Shape1.top, s.Shape1.left, s.xlistWidth, s.xlistHeight } }, // at the strip's corner
        };
        for (const auto& [control, box] : boxes)
            EXPECT_EQ(
                (config::SkinBox { control->top(), control->left(), control->width(), control->height() }),
                box)
                << control->fullName();
        EXPECT_EQ(
            std::tuple(c.picf.top(), c.picf.left()), std::tuple(s.xCabinet.top + 3, s.xCabinet.left + 3));
        EXPECT_EQ(std::tuple(c.lblPath.caption(), c.lblPath.top()), std::tuple("1", s.lblPathTop));
        // (The other navigation labels follow in a row on every skin's scenario.)
        EXPECT_EQ(std::tuple(c.lblNav(0).top(), c.lblNav(0).left()), std::tuple(s.lblNavTop, s.lblNavLeft));
        browser::makeVis(c, run);
        EXPECT_EQ(c.lblPath.visible(), s.showPath);
        EXPECT_EQ(c.lblNav(0).visible() + c.lblNav(4).visible(), 2 * s.showNav);
        EXPECT_EQ(std::tuple(c.ll(0).caption(), c.ll(0).visible(), c.ll(0).height()),
            std::tuple("Sgj", false, form.textHeight("Sgj")));
        EXPECT_EQ(std::tuple(strip.listCols, strip.stripGap, strip.rowAlign),
            std::tuple(s.listCols, s.stripGap, s.rowAlign));
    }
}

} // namespace
} // namespace ombrel::test
