// Tests of reading ombrel.ini: places and columns, treatments, defaults, and the files that fail.
#include "config/SettingsFile.h"

#include "IniSample.h"
#include "TempHome.h"

#include <gtest/gtest.h>

#include "config/NumberText.h"

#include <functional>

namespace ombrel::config {
namespace {

using test::IniSample;
using test::TempHome;

// Reads the text as ombrel.ini; the error, if any, is left to the caller's check of settings.
Settings read(const std::string& text, std::optional<SettingsError>* error = nullptr)
{
    TempHome home;
    home.write("ombrel.ini", text);
    Settings settings;
    try {
        OpenINI(home.path(), settings);
    } catch (const SettingsError& e) {
        if (!error)
            throw;
        error->emplace(e);
    }
    return settings;
}

std::string yes(bool value)
{
    return value ? "True" : "False";
}

// Every line holds a value of its own; path 4 is a gap.
IniSample fullSample()
{
    IniSample ini;
    for (int p = 1; p <= 20; ++p) {
        std::string n = std::to_string(p);
        const std::string values[] = { "roms\\p" + n + "\\", "emu" + n + ".exe", p % 2 ? "YES" : "no",
            "Path " + n, " -o" + n + " ", "logo" + n + ".png", "emu" + n + "\\", "art" + n + "\\" };
        for (int line = 1; p != 4 && line <= 8; ++line)
            ini.setBlock(p, line, values[line - 1]);
    }
    const char* tail[] = { "mame\\", "impact\\", "yes", "modeler\\", "u64\\", "u64b\\", "vp\\", "s11\\", "",
        "-s11", "daphne\\", "-daph", "60", "45", "YES", "800", "600", "60", "16", "75", "32", "yes" };
    for (int line = 1; line <= 22; ++line)
        ini.setTail(line, tail[line - 1]);
    ini.lines[IniSample::tailIndex(9)] = "YES";
    return ini;
}

TEST(SettingsFile, ReadsEveryLineIntoItsValue)
{
    Settings s = read(fullSample().text());
    for (int p = 1; p <= 20; ++p) {
        SCOPED_TRACE("path " + std::to_string(p));
        std::string n = std::to_string(p == 4 ? 1 : p); // the gap borrows from path 1
        EXPECT_EQ(s.romDir[p], p == 4 ? "" : "roms\\p" + n + "\\");
        EXPECT_EQ(s.fullPath[p], p != 4 && p % 2 == 1);
        EXPECT_EQ(s.emuOpts[p], p == 4 ? "" : " -o" + n + " ");
        EXPECT_EQ(s.emuExe[p] + s.pathName[p] + s.logoFile[p] + s.emuDir[p] + s.artDir[p],
            "emu" + n + ".exePath " + n + "logo" + n + ".pngemu" + n + "\\art" + n + "\\");
    }
    EXPECT_EQ(
        s.mameDir + s.impactDir + s.modelerDir + s.u64Dir + s.u64Dir2 + s.vpDir + s.s11Dir + s.daphneDir,
        "mame\\impact\\modeler\\u64\\u64b\\vp\\s11\\daphne\\");
    EXPECT_EQ(s.s11Opts + s.daphneOpts, "-s11-daph");
    EXPECT_TRUE(s.impactNT && s.s11NewPlugins && s.tvOut && s.powerOff);
    EXPECT_EQ(s.scrollRate, 60);
    EXPECT_EQ(s.scrollRate2, 45);
    std::vector<float> numbers { s.scrW, s.scrH, s.deskFreq, s.deskBits, s.frontFreq, s.frontBits };
    EXPECT_EQ(numbers, (std::vector<float> { 800, 600, 60, 16, 75, 32 }));
}

TEST(SettingsFile, TreatsEachValueByItsLine)
{
    struct Row
    {
        const char* name;
        size_t index; // the line of the sample that is replaced
        const char* line;
        std::function<std::string(const Settings&)> value;
        const char* expected;
    };
    auto pathName = [](const Settings& s) { return s.pathName[1]; };
    auto opts = [](const Settings& s) { return s.emuOpts[1]; };
    auto roms = [](const Settings& s) { return s.romDir[1]; };
    auto fullPath = [](const Settings& s) { return yes(s.fullPath[1]); };
    auto plugins = [](const Settings& s) { return yes(s.s11NewPlugins); };
    auto rate = [](const Settings& s) { return std::to_string(s.scrollRate); };
    auto resX = [](const Settings& s) { return std::to_string(s.scrW); };
    const size_t romsLine = IniSample::blockIndex(1, 1), switchLine = IniSample::blockIndex(1, 3);
    const size_t rateLine = IniSample::tailIndex(13), pluginLine = IniSample::tailIndex(9);
    const Row rows[] = {
        { "trimmed", IniSample::blockIndex(1, 4), "PathName=  Vector Games  ", pathName, "Vector Games" },
        { "options keep their blanks", IniSample::blockIndex(1, 5), "Opts=  -window  ", opts, "  -window  " },
        { "yes", switchLine, "FullPaths=yes", fullPath, "True" },
        { "plug-in YES alone", pluginLine, "  yes  ", plugins, "True" },
        { "plug-in YES behind a label", pluginLine, "S11=YES", plugins, "False" },
        { "whole number with a rest", rateLine, "ScrollRateKeys=75ms", rate, "75" },
        { "whole number half to even down", rateLine, "ScrollRateKeys=12.5", rate, "12" },
        { "number with blanks and a fraction", IniSample::tailIndex(16), "ResX= 1024.5 ", resX,
            "1024.500000" },
        { "any label of the right length", romsLine, "12345roms\\", roms, "roms\\" },
        { "a missing label eats the value", romsLine, "roms\\mame\\", roms, "mame\\" },
        { "quoted line keeps its comma", IniSample::blockIndex(1, 5), "\"Opts=-a,b\"", opts, "-a,b" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        IniSample ini;
        ini.lines[row.index] = row.line;
        EXPECT_EQ(row.value(read(ini.text())), row.expected);
    }
}

// Comments and blank lines stand before every line read by a skipping read, and the file reads the same.
// (Line ends of every kind are the field reader's test.)
TEST(SettingsFile, CommentsBeforeTheSkippingLinesReadTheSame)
{
    const Settings expected = read(fullSample().text());
    IniSample commented = fullSample();
    std::vector<size_t> skipping;
    for (int p = 1; p <= 20; ++p)
        skipping.push_back(IniSample::blockIndex(p, 1));
    for (int line : { 1, 2, 3, 4, 5, 6, 7, 8, 11, 13, 15, 16, 18, 20, 22 })
        skipping.push_back(IniSample::tailIndex(line));
    for (auto at = skipping.rbegin(); at != skipping.rend(); ++at)
        commented.insertBefore(*at, "* a note").insertBefore(*at, "").insertBefore(*at, "   * indented");

    EXPECT_TRUE(read(commented.text()) == expected);
}

TEST(SettingsFile, DisplayModesCompleteEachOther)
{
    // Desktop frequency and bits, then the front end's: half a mode takes the other's.
    using Mode = std::array<float, 4>;
    const std::pair<Mode, Mode> rows[] = { { { 60, 0, 75, 32 }, { 75, 32, 75, 32 } },
        { { 60, 16, 0, 32 }, { 60, 16, 60, 16 } }, { { 60, 16, 75, 32 }, { 60, 16, 75, 32 } } };
    for (const auto& [file, expected] : rows) {
        IniSample ini;
        for (int i = 0; i < 4; ++i)
            ini.setTail(18 + i, config::numberText(file[static_cast<size_t>(i)]));
        Settings s = read(ini.text());
        EXPECT_EQ((Mode { s.deskFreq, s.deskBits, s.frontFreq, s.frontBits }), expected) << file[1];
    }
}

TEST(SettingsFile, EmptyValuesFallBack)
{
    IniSample ini;
    ini.setTail(1, "mame\\").setTail(2, "i\\").setTail(4, "m\\").setTail(5, "u\\").setTail(6, "u2\\");
    ini.setTail(7, "v\\").setTail(8, "s\\").setTail(11, "d\\");
    ini.setBlock(1, 3, "YES").setBlock(1, 4, "One").setBlock(1, 5, "-o").setBlock(1, 6, "l.png");
    ini.setBlock(2, 1, "r2\\");
    Settings s = read(ini.text());
    // Path 1 falls back on the main emulator folder and program, and later paths on path 1.
    for (int p : { 1, 2, 20 }) {
        SCOPED_TRACE(p);
        EXPECT_EQ(s.artDir[p] + s.emuDir[p] + s.emuExe[p], "mame\\mame\\mame.exe");
        EXPECT_EQ(s.pathName[p] + s.logoFile[p], "Onel.png");
    }
    // What belongs to one path alone is not borrowed.
    EXPECT_EQ(s.romDir[2] + s.romDir[3], "r2\\");
    EXPECT_FALSE(s.fullPath[2]);
    EXPECT_EQ(s.emuOpts[2], "");
    EXPECT_EQ(std::vector<std::string>(s.artDir.begin() + 21, s.artDir.end()),
        (std::vector<std::string> { "i\\", "m\\", "u\\", "v\\", "s\\", "d\\" }));
    EXPECT_EQ(std::vector<std::string>(s.logoFile.begin() + 21, s.logoFile.end()),
        (std::vector<std::string> {
            "impact.gif", "modeler.gif", "u64.gif", "vp.gif", "s11.gif", "daphne.gif", "extras.gif" }));

    // A path's own values win over the fallbacks.
    s = read(fullSample().setBlock(1, 8, "").text());
    EXPECT_EQ(s.artDir[1] + s.artDir[4] + s.emuDir[1] + s.emuExe[1], "mame\\mame\\emu1\\emu1.exe");
}

TEST(SettingsFile, ReportsWhereAFileFails)
{
    struct Row
    {
        const char* name;
        std::string text;
        int line;
        const char* label;
        const char* message;
    };
    auto cut = [](size_t lines, const char* extra = nullptr) {
        IniSample ini;
        ini.truncate(lines);
        if (extra)
            ini.lines.emplace_back(extra);
        return ini.text();
    };
    auto tail = [](int line, const char* value) { return IniSample().setTail(line, value).text(); };
    auto lineOf = [](int tailLine) { return static_cast<int>(IniSample::tailIndex(tailLine)) + 1; };
    std::string noLastLineEnd = cut(IniSample::blockIndex(20, 2));
    noLastLineEnd.resize(noLastLineEnd.size() - 2);
    const Row rows[] = {
        { "ends at a plain read, without a last line end", noLastLineEnd, 154,
            "Exec=", "ombrel.ini line 154: the file ends where Exec= of path 20 should stand" },
        { "empty file", "", 1,
            "Exec=", "ombrel.ini line 1: the file ends where Exec= of path 1 should stand" },
        { "ends at a skipping read with a plain read behind", cut(IniSample::tailIndex(11)), lineOf(11),
            "DaphOpt=", "the file ends where DaphOpt= should stand" },
        { "ends in a comment at a skipping read", cut(IniSample::tailIndex(11), "* daphne"), lineOf(12),
            "DaphOpt=", "the file ends where DaphOpt= should stand" },
        { "screen width not a number", tail(16, "wide"), lineOf(16), "ResX=", "ResX= needs a number" },
        { "rate too large for its type", tail(18, "1e40"), lineOf(18),
            "Freq=", "Freq= holds a number too large" },
        { "scroll rate rounds above 32767", tail(14, "32767.5"), lineOf(14), "ScrollRateJoys=", "must lie" },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::optional<SettingsError> error;
        read(row.text, &error);
        ASSERT_TRUE(error.has_value());
        EXPECT_EQ(error->line(), row.line);
        EXPECT_EQ(error->label(), row.label);
        EXPECT_NE(std::string(error->what()).find(row.message), std::string::npos) << error->what();
    }
}

// The case of the file's name does not count. Each read replaces every value, and the last line alone
// may be missing: the machine is then not switched off.
TEST(SettingsFile, EachReadReplacesEveryValue)
{
    TempHome home;
    Settings settings;
    home.write("Ombrel.INI", fullSample().text());
    OpenINI(home.path(), settings);
    ASSERT_TRUE(settings.powerOff);
    home.write("Ombrel.INI", IniSample().truncate(IniSample::tailIndex(22)).text());
    OpenINI(home.path(), settings);
    Settings fresh;
    OpenINI(home.path(), fresh);
    EXPECT_FALSE(settings.powerOff);
    EXPECT_TRUE(settings == fresh);
}

} // namespace
} // namespace ombrel::config
