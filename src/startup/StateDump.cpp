// StateDump: the dump lines, from the back form to the front one, then the shared values.
#include "startup/StateDump.h"

#include "config/Settings.h"
#include "platform/Fonts.h"
#include "runtime/Form.h"
#include "runtime/FormStack.h"
#include "runtime/controls/Image.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/ListBox.h"
#include "runtime/controls/MediaView.h"
#include "runtime/controls/PictureControl.h"
#include "runtime/controls/Shape.h"
#include "startup/Cabinet.h"
#include "startup/DumpLine.h"
#include "startup/MainForm.h"

#include <type_traits>

namespace ombrel::startup {

namespace {

using Lines = std::vector<std::string>;

// "state curPath 1", "setting mameDir \"roms/\"": a named value, text quoted.
template <class T> std::string valueLine(std::string_view kind, std::string_view name, const T& value)
{
    DumpLine line(kind);
    if constexpr (std::is_same_v<T, std::string>)
        line.text(name, value);
    else
        line.number(name, value);
    return line;
}

DumpLine& box(DumpLine& line, const runtime::PixelRect& rect)
{
    return line.number("x", rect.x).number("y", rect.y).number("w", rect.w).number("h", rect.h);
}

// What only one kind of control has comes after the box, in a fixed order per kind.
void controlLine(Lines& out, const runtime::Form& form, const runtime::Control& control,
    const runtime::PixelRect& area, const runtime::FormStack& forms, platform::Fonts& fonts)
{
    DumpLine line("control", form.name() + "." + control.fullName());
    auto withBox = [&](std::string_view kind) -> DumpLine& {
        line.word("kind", kind).flag("visible", control.visible());
        return box(line, control.pixelRect(area.x, area.y));
    };
    if (auto* label = dynamic_cast<const runtime::Label*>(&control)) {
        const runtime::FontSpec& font = label->font();
        withBox("label")
            .number("fore", label->foreColor())
            .number("back", label->backColor())
            .number("style", label->backStyle())
            .number("align", label->alignment())
            .text("font", font.name)
            .text("file", forms.relative(fonts.fileOf(font)))
            .number("size", font.sizePt)
            .flag("bold", font.bold)
            .text("caption", label->caption());
    } else if (auto* picture = dynamic_cast<const runtime::PictureControl*>(&control)) {
        withBox("picture")
            .number("back", picture->backColor())
            .text("picture", forms.relative(picture->fileName()));
    } else if (auto* image = dynamic_cast<const runtime::Image*>(&control)) {
        withBox("image").text("picture", forms.relative(image->picture()));
    } else if (auto* shape = dynamic_cast<const runtime::Shape*>(&control)) {
        withBox("shape").number("border", shape->borderColor()).number("fill", shape->fillColor());
    } else if (auto* pictureBox = dynamic_cast<const runtime::PictureBox*>(&control)) {
        withBox("box").number("back", pictureBox->backColor());
    } else if (dynamic_cast<const runtime::ListBox*>(&control)) {
        withBox("list");
    } else if (dynamic_cast<const runtime::MediaView*>(&control)) {
        withBox("media");
    } else {
        withBox("other");
    }
    out.push_back(line);
}

void formLines(Lines& out, const runtime::FormStack& forms, platform::Fonts& fonts)
{
    for (const runtime::Form* form : forms.zOrder()) {
        const runtime::PixelRect area = form->pixelRect();
        DumpLine line("form", form->name());
        line.flag("visible", form->visible())
            .flag("active", forms.activeForm() == form)
            .flag("enabled", form->enabled());
        out.push_back(box(line, area));
        for (const runtime::Timer* timer : form->timers())
            out.push_back(DumpLine("timer", form->name() + "." + timer->name())
                              .flag("enabled", timer->enabled())
                              .number("interval", timer->interval()));
        if (!form->visible())
            continue;
        for (const runtime::Control* control : form->controls())
            controlLine(out, *form, *control, area, forms, fonts);
    }
}

// The shared values by their names: one line each, so a new value is one more line here.
void stateLines(Lines& out, const Cabinet& c, const runtime::FormStack& forms)
{
    auto state = [&out](std::string_view name, const auto& value) {
        out.push_back(valueLine("state", name, value));
    };
    const config::RunState& run = c.run;
    const config::SavedState& saved = c.saved;
    state("curPath", run.curPath);
    state("saverCount", run.saverCount);
    state("saverDelay", saved.saverDelay);
    state("saverAuto", run.saverAuto);
    state("muted", saved.muted);
    state("fontSize", saved.fontSize);
    state("curSkin", saved.curSkin);
    state("songMode", saved.songMode);
    state("songVolume", saved.songVolume);
    state("curSong", saved.curSong);
    state("lastPath", saved.lastPath);
    state("lastIndex", saved.lastIndex);
    state("midRow", run.midRow);
    state("listType", run.listType);
    // The strip's values as the browser holds them now (the columns made at least 1, the gap scaled to
    // the screen); as the skin gave them while the browser is away.
    const auto* main = dynamic_cast<const MainForm*>(forms.existing("Main"));
    state("listCols", main ? main->strip.listCols.value_or(0) : run.skin.listCols);
    state("rowAlign", main ? main->strip.rowAlign : run.skin.rowAlign);
    state("stripGap", main ? main->strip.stripGap : run.skin.stripGap);
    state("highStep", main ? main->highStep : 0);
    state("showSnap", run.skin.showSnap);
    state("showCabinet", run.skin.showCabinet);
    state("showFlyer", run.skin.showFlyer);
    state("showMarquee", run.skin.showMarquee);
    state("showPath", run.skin.showPath);
    state("showNav", run.skin.showNav);
    state("showLogo", run.showLogo);
    state("themesDir", forms.relative(run.themesDir));
    state("curPic", forms.relative(run.curPic));
    state("fileFound", run.fileFound);
    state("scanDir", forms.relative(run.scanDir));
    state("deskW", run.deskW);
    state("deskH", run.deskH);
    state("schemeFont", c.scheme.schemeFont);
    state("schemeSize", c.scheme.schemeSize);
    state("schemeBack", c.scheme.schemeBack);
    state("schemeList", c.scheme.schemeList);
    state("schemeFore", c.scheme.schemeFore);
}

// ombrel.ini as it was taken: every path, even an empty one, since a dump is how a cabinet's report
// becomes a test.
void settingLines(Lines& out, const config::Settings& s)
{
    for (int p = 1; p <= config::kExtrasPath; ++p) {
        const auto i = static_cast<size_t>(p);
        DumpLine line("path", std::to_string(p));
        if (p <= config::kUserPaths)
            line.text("rom", s.romDir[i]).text("emu", s.emuExe[i]).text("opts", s.emuOpts[i]);
        line.text("logo", s.logoFile[i]);
        if (p <= config::kUserPaths)
            line.text("emuDir", s.emuDir[i]);
        if (p <= config::kDaphnePath)
            line.text("art", s.artDir[i]);
        if (p <= config::kUserPaths)
            line.flag("fullPath", s.fullPath[i]).text("name", s.pathName[i]);
        out.push_back(line);
    }
    auto setting = [&out](std::string_view name, const auto& value) {
        out.push_back(valueLine("setting", name, value));
    };
    setting("mameDir", s.mameDir);
    setting("impactDir", s.impactDir);
    setting("impactNT", s.impactNT);
    setting("modelerDir", s.modelerDir);
    setting("u64Dir", s.u64Dir);
    setting("u64Dir2", s.u64Dir2);
    setting("vpDir", s.vpDir);
    setting("s11Dir", s.s11Dir);
    setting("s11NewPlugins", s.s11NewPlugins);
    setting("s11Opts", s.s11Opts);
    setting("daphneDir", s.daphneDir);
    setting("daphneOpts", s.daphneOpts);
    setting("scrollRate", s.scrollRate);
    setting("scrollRate2", s.scrollRate2);
    setting("tvOut", s.tvOut);
    setting("scrW", s.scrW);
    setting("scrH", s.scrH);
    setting("deskFreq", s.deskFreq);
    setting("deskBits", s.deskBits);
    setting("frontFreq", s.frontFreq);
    setting("frontBits", s.frontBits);
    setting("powerOff", s.powerOff);
}

} // namespace

std::vector<std::string> dumpState(
    const runtime::FormStack& forms, const Cabinet& cabinet, platform::Fonts& fonts)
{
    Lines out;
    formLines(out, forms, fonts);
    if (auto* main = forms.existing("Main")) {
        if (auto* list = dynamic_cast<const runtime::ListBox*>(main->find("List1")))
            out.push_back(DumpLine("list")
                              .number("curPath", cabinet.run.curPath)
                              .number("index", list->listIndex())
                              .number("count", list->listCount())
                              .flag("visible", list->visible())
                              .text("text", list->text()));
    }
    stateLines(out, cabinet, forms);
    settingLines(out, cabinet.settings);
    return out;
}

} // namespace ombrel::startup
