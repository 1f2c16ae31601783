// The skin's colour scheme: how scheme.cfg is read when it is whole, short or damaged, what the check
// report says of it, and where the boot puts its font and colours; the skin's greeting sound.
#include "CabinetFixture.h"

#include "browser/Theme.h"
#include "core/FieldReader.h"
#include "core/VbMath.h"
#include "platform/fake/FakeFonts.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>

namespace ombrel::test {
namespace {

using browser::Scheme;

// What a rebuilt browser holds from the skin before: a read that stops keeps these.
const Scheme kOld { "Old Font", 9, 111, 222, 333 };

TEST(ThemeTest, SchemeFileIsReadValueByValueAndAStopKeepsTheRest)
{
    struct Row
    {
        const char* name;
        const char* bytes;
        Scheme expected;
        std::array<int, 5> lines;
        const char* stop; // a piece of the stop message, "" for a whole read
    };
    const Row rows[] = {
        { "one line", "Verdana,14,0,16777215,65535\r\n", { "Verdana", 14, 0, 16777215, 65535 },
            { 1, 1, 1, 1, 1 }, "" },
        { "five lines, blanks", "  Arial Black\n 9.5 \r\n255\r\n65280\n16711680",
            { "Arial Black", 9.5, 255, 65280, 16711680 }, { 1, 2, 3, 4, 5 }, "" },
        { "quoted font with a comma", "\"Sans, Bold\",12,1,2,3\r\n", { "Sans, Bold", 12, 1, 2, 3 },
            { 1, 1, 1, 1, 1 }, "" },
        { "short file", "Verdana,14\r\n", { "Verdana", 14, 111, 222, 333 }, { 1, 1, 0, 0, 0 },
            "schemeBack is missing" },
        { "a word for a colour", "Verdana,14\r\n0,blue,65535\r\n", { "Verdana", 14, 0, 222, 333 },
            { 1, 1, 2, 0, 0 }, "line 2: schemeList is not a number" },
        // Only the low 24 bits of a colour are shown; a number past 32 bits is no whole number.
        { "colours out of range", "V,-3,-1,16777217,4294967296", { "V", -3, 0xFFFFFF, 1, 333 },
            { 1, 1, 1, 1, 0 }, "schemeFore is beyond" },
        { "a huge size", "V,1e300,1,2,3", { "V", 9, 111, 222, 333 }, { 1, 0, 0, 0, 0 },
            "schemeSize is too large" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Scheme scheme = kOld;
        core::FieldReader file(row.bytes);
        const browser::SchemeRead read = browser::readScheme(file, scheme);
        EXPECT_EQ(scheme, row.expected);
        EXPECT_EQ(read.lines, row.lines);
        if (*row.stop)
            EXPECT_NE(read.stop.find(row.stop), std::string::npos) << read.stop;
        else
            EXPECT_EQ(read.stop, "");
    }
}

TEST(ThemeTest, CheckReportNamesEachValueItsLineAndTheFontFile)
{
    platform::fake::FakeFonts fonts;
    EXPECT_EQ(browser::schemeReport(std::string("Verdana\r\n14,255\r\nred,1\r\n"), fonts),
        (std::vector<std::string> {
            "scheme.cfg line 1: schemeFont = \"Verdana\", font file fake:Verdana",
            "scheme.cfg line 2: schemeSize = 14 points",
            "scheme.cfg line 2: schemeBack = 255 (red 255, green 0, blue 0)",
            "scheme.cfg line 3: schemeList is not a number; it and the values after it are not read",
        }));
    EXPECT_EQ(browser::schemeReport(std::nullopt, fonts).size(), 1u);
}

browser::ThemeContext themeOf(CabinetFixture& fx)
{
    auto& cabinet = fx.cabinet();
    return { fx.main().c, cabinet.run, fx.main().strip, cabinet.saved, fx.files, cabinet.scheme,
        fx.failures };
}

// A boot with the skin "Skin", which has a greeting sound and this scheme.cfg, if any.
void bootThemed(CabinetFixture& fx, const std::optional<std::string>& scheme, CabinetSetup setup = {})
{
    fx.write(setup);
    if (scheme)
        fx.home.write("omthemes/Skin/scheme.cfg", *scheme);
    fx.home.write("omthemes/Skin/start.mp3", "hello");
    fx.boot();
}

TEST(ThemeTest, SchemeFontAndColoursLandOnTheBrowser)
{
    const uint32_t back = core::rgb(0x12, 0x34, 0x56), list = core::rgb(0, 255, 0),
                   fore = core::rgb(255, 0, 0);
    const std::string file = "Verdana,12," + std::to_string(back) + "," + std::to_string(list) + ","
        + std::to_string(fore) + "\r\n";
    // The user's size above 0 wins over the scheme's. Without a scheme (a first load) the colours are
    // black and the labels keep their design font, but the user's size still goes in.
    const std::tuple<std::optional<std::string>, int, runtime::FontSpec> rows[] = {
        { file, 0, { "Verdana", 12, false } },
        { file, 20, { "Verdana", 20, false } },
        { std::nullopt, 16, { "MS Sans Serif", 16, false } },
    };
    for (const auto& [scheme, fontSize, font] : rows) {
        SCOPED_TRACE(fontSize);
        CabinetFixture fx;
        bootThemed(fx, scheme, { .fontSize = fontSize });
        auto& c = fx.main().c;
        const bool read = scheme.has_value();
        EXPECT_EQ(fx.cabinet().scheme.schemeSize, font.sizePt);
        const uint32_t backSeen = read ? back : 0, foreSeen = read ? fore : 0;
        EXPECT_EQ(std::tuple(fx.main().backColor(), c.xFlyer.backColor(), c.xCabinet.backColor()),
            std::tuple(backSeen, backSeen, backSeen));
        for (runtime::Label* label : { &c.lblPath, &c.lblNav(0), &c.lblNav(2), &c.lblNav(4) })
            EXPECT_EQ(std::tuple(label->foreColor(), label->font()), std::tuple(foreSeen, font))
                << label->fullName();
        // The boot lays the strip out again after the scheme, so the middle row's own look is seen right
        // after a scheme is put on: in a strip of several columns it may grow to its name. (The rows'
        // colours and fonts are on every skin's scenario.)
        fx.main().strip.listCols = 3;
        browser::setScheme(themeOf(fx));
        for (int i = 0; i <= c.ll.ubound(); ++i)
            EXPECT_EQ(c.ll(i).autoSize(), i == fx.cabinet().run.midRow) << i;
    }
}

TEST(ThemeTest, GreetingPlaysAtBootAndIsStoppedWhenTheSoundIsOff)
{
    CabinetFixture fx;
    bootThemed(fx, std::nullopt);
    EXPECT_EQ(fx.countSinceMark("media mpFX open omthemes/Skin/start.mp3"), 1);
    // Muted: a sound left playing stops, no greeting starts, and timfx is not touched.
    auto& player = fx.main().mpFX.player();
    player.setFileName(fx.home.path() + "omthemes/Skin/end.mp3");
    player.play();
    fx.main().timfx.setEnabled(true);
    fx.cabinet().saved.muted = true;
    fx.mark();
    browser::SetTheme(themeOf(fx), player, fx.main().timfx);
    EXPECT_EQ(fx.sinceMark(), std::vector<std::string> { "media mpFX stop" });
    EXPECT_TRUE(fx.main().timfx.enabled());
    // With the sound on, timfx goes off before the greeting starts.
    fx.cabinet().saved.muted = false;
    fx.mark();
    browser::SetTheme(themeOf(fx), player, fx.main().timfx);
    EXPECT_FALSE(fx.main().timfx.enabled());
    EXPECT_EQ(fx.sinceMark(),
        (std::vector<std::string> { "media mpFX open omthemes/Skin/start.mp3", "media mpFX play" }));
}

} // namespace
} // namespace ombrel::test
