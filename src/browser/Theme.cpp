// Theme: reading scheme.cfg, and putting the skin's font and colours on the browser.
#include "browser/Theme.h"

#include "browser/PreviewPanels.h"
#include "config/NumberText.h"
#include "core/FailureLog.h"
#include "core/FieldReader.h"
#include "core/PassOver.h"
#include "core/VbMath.h"
#include "platform/FieldFile.h"
#include "platform/Fonts.h"
#include "platform/MediaPlayer.h"
#include "runtime/Timer.h"

#include <cfloat>
#include <cmath>
#include <functional>

namespace ombrel::browser {

namespace {

// Why the record's read ended at one value.
struct Stop
{
    std::string why;
};

// NOTE: a colour is a 32-bit whole number, but only its low 24 bits are a colour: a value outside
// 0..16777215 shows what those bits say (-1 is white, 16777216 black), as painting reads no
// more. A number beyond 32 bits is no whole number at all and ends the read like a word would.
uint32_t colourOf(double value)
{
    std::optional<int32_t> whole = core::toLong(value);
    if (!whole)
        throw Stop { "is beyond a whole number's range" };
    return static_cast<uint32_t>(*whole) & 0xFFFFFFu;
}

double sizeOf(double value)
{
    if (std::fabs(value) > FLT_MAX)
        throw Stop { "is too large" };
    return static_cast<double>(static_cast<float>(value));
}

// Reads one value; a missing or malformed one stops the record with the line it stood on.
template <class Read> auto take(core::FieldReader& file, SchemeRead& result, size_t index, Read read)
{
    const int line = file.line();
    try {
        if (file.atEnd())
            throw Stop { "is missing: the file ends before it" };
        auto value = read();
        result.lines[index] = file.fieldLine();
        return value;
    } catch (const core::ReadError&) {
        result.stop = std::string(kSchemeFileName) + " line " + std::to_string(line) + ": "
            + kSchemeNames[index] + " is not a number";
    } catch (const Stop& stop) {
        result.stop = std::string(kSchemeFileName) + " line " + std::to_string(line) + ": "
            + kSchemeNames[index] + " " + stop.why;
    }
    throw result;
}

std::string colourText(uint32_t colour)
{
    return std::to_string(colour) + " (red " + std::to_string(core::redOf(colour)) + ", green "
        + std::to_string(core::greenOf(colour)) + ", blue " + std::to_string(core::blueOf(colour)) + ")";
}

} // namespace

SchemeRead readScheme(core::FieldReader& file, Scheme& scheme)
{
    SchemeRead result;
    try {
        // Each value lands as soon as it is read: a later stop leaves the earlier ones in place.
        scheme.schemeFont = take(file, result, 0, [&] { return file.readField(); });
        scheme.schemeSize = take(file, result, 1, [&] { return sizeOf(file.readNumber()); });
        scheme.schemeBack = take(file, result, 2, [&] { return colourOf(file.readNumber()); });
        scheme.schemeList = take(file, result, 3, [&] { return colourOf(file.readNumber()); });
        scheme.schemeFore = take(file, result, 4, [&] { return colourOf(file.readNumber()); });
    } catch (const SchemeRead& stopped) {
        return stopped;
    }
    return result;
}

std::vector<std::string> schemeReport(const std::optional<std::string>& bytes, platform::Fonts& fonts)
{
    if (!bytes)
        return { std::string(kSchemeFileName) + ": missing; every form keeps its design font, on black" };
    Scheme scheme;
    core::FieldReader file(*bytes);
    const SchemeRead read = readScheme(file, scheme);
    const std::string values[] = {
        "\"" + scheme.schemeFont + "\", font file " + fonts.fileOf({ scheme.schemeFont, 12, false }),
        config::numberText(scheme.schemeSize) + " points",
        colourText(scheme.schemeBack),
        colourText(scheme.schemeList),
        colourText(scheme.schemeFore),
    };
    std::vector<std::string> report;
    for (size_t i = 0; i < kSchemeNames.size(); ++i) {
        if (read.lines[i] == 0)
            break;
        report.push_back(std::string(kSchemeFileName) + " line " + std::to_string(read.lines[i]) + ": "
            + kSchemeNames[i] + " = " + values[i]);
    }
    if (!read.stop.empty())
        report.push_back(read.stop + "; it and the values after it are not read");
    return report;
}

void setScheme(const ThemeContext& ctx)
{
    MainControls& c = ctx.c;
    Scheme& scheme = ctx.scheme;
    auto step = [&ctx](auto&& statement) { core::passOver(ctx.failures, statement); };

    step([&] {
        const std::string path = ctx.run.themesDir + ctx.saved.curSkin + kSchemeFileName;
        std::optional<core::FieldReader> file = platform::openFieldFile(ctx.files, path);
        if (!file)
            return std::string(kSchemeFileName) + ": cannot open " + platform::toNativePath(path);
        return readScheme(*file, scheme).stop;
    });
    step([&] {
        if (ctx.saved.fontSize > 0)
            scheme.schemeSize = ctx.saved.fontSize;
    });
    // A label refuses a size of 0 and keeps its own; an empty name, the scheme of a skin never read,
    // leaves the design font's name the same way.
    auto putFont = [&](runtime::Label& label) {
        label.setFontSize(scheme.schemeSize);
        if (!scheme.schemeFont.empty())
            label.setFontName(scheme.schemeFont);
    };
    step([&] {
        c.lblPath.setForeColor(scheme.schemeFore);
        putFont(c.lblPath);
    });
    for (int i = 0; i <= 4; ++i)
        step([&] {
            c.lblNav(i).setForeColor(scheme.schemeFore);
            putFont(c.lblNav(i));
        });
    step([&] {
        c.xFlyer.setBackColor(scheme.schemeBack);
        c.xCabinet.setBackColor(scheme.schemeBack);
    });
    step([&] { SetListSize(c, ctx.run, ctx.strip, ctx.scheme); });
    if (ctx.run.listType != "list" && !ctx.run.listType.empty()) {
        // The picture strip draws its own cells; the text rows stay hidden and untouched.
        step([&] { c.ll(0).setVisible(false); });
        return;
    }
    // NOTE: the rows built just above were measured in the font ll(0) had before; the boot lays the
    // strip out again later, in this font.
    for (int i = 0; i <= c.ll.ubound(); ++i)
        step([&] {
            c.ll(i).setForeColor(scheme.schemeList);
            putFont(c.ll(i));
        });
    const int mid = ctx.run.midRow;
    step([&] { c.ll(mid).setFontBold(true); });
    step([&] {
        if (ctx.strip.listCols > 1)
            c.ll(mid).setAutoSize(true);
    });
    step([&] {
        c.ll(mid).setWordWrap(false);
        c.ll(mid).zOrder(0);
    });
}

void SetTheme(const ThemeContext& ctx, platform::MediaPlayer& mpFX, runtime::Timer& timfx)
{
    core::passOver(ctx.failures, [&] { setScheme(ctx); });
    if (ctx.saved.muted) {
        core::passOver(ctx.failures, [&] { mpFX.stop(); });
        return;
    }
    // timfx ends the program once the effects player falls silent after the goodbye; the greeting
    // must not be taken for it.
    core::passOver(ctx.failures, [&] { timfx.setEnabled(false); });
    core::passOver(ctx.failures, [&] {
        mpFX.setFileName(skinFile(ctx.files, ctx.run, ctx.saved, "start.mp3"));
        if (!mpFX.fileName().empty())
            mpFX.play();
    });
}

} // namespace ombrel::browser
