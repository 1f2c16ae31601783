// SkinLayout: placing the browser's elements by the skin, and taking them down again.
#include "browser/SkinLayout.h"

#include "browser/SkinFile.h"
#include "core/PassOver.h"
#include "platform/FieldFile.h"
#include "platform/Files.h"
#include "runtime/Form.h"
#include "runtime/FormStack.h"

#include <initializer_list>
#include <optional>
#include <stdexcept>

namespace ombrel::browser {

namespace {

void place(runtime::Control& control, const config::SkinBox& box)
{
    control.setWidth(box.width);
    control.setHeight(box.height);
    control.setTop(box.top);
    control.setLeft(box.left);
}

// Why the skin could not be read in full, for the failure log.
std::string whyNotRead(
    platform::Files& files, const std::string& skinFolder, const SkinRead& read, bool opened)
{
    if (read.failure.empty())
        return {};
    const std::string kept = "; the layout keeps the values held so far";
    if (!opened && !files.exists(skinFolder))
        return "the skin folder " + platform::toNativePath(skinFolder) + " is not there" + kept;
    if (!opened)
        return platform::toNativePath(skinFolder + kSkinFileName) + " cannot be opened" + kept;
    return read.failure + kept;
}

} // namespace

std::string setRes(MainControls& c, config::RunState& run, StripLayout& strip, const std::string& skinFolder,
    platform::Files& files)
{
    std::optional<core::FieldReader> file = platform::openFieldFile(files, skinFolder + kSkinFileName);
    const SkinRead read = readSkin(file ? &*file : nullptr, run);
    const config::SkinValues& s = run.skin;

    place(c.xScreen, s.xScreen);
    place(c.xCabinet, s.xCabinet);
    place(c.xFlyer, s.xFlyer);
    place(c.xMarquee, s.xMarquee);
    c.picf.setTop(c.xCabinet.top() + 3);
    c.picf.setLeft(c.xCabinet.left() + 3);
    place(c.Shape1, s.Shape1);
    c.xlist(0).setWidth(s.xlistWidth);
    c.xlist(0).setHeight(s.xlistHeight);
    c.xlist(0).setTop(c.Shape1.top());
    c.xlist(0).setLeft(c.Shape1.left());
    c.lblPath.setCaption("1");
    c.lblPath.setTop(s.lblPathTop);
    c.lblPath.setLeft(s.lblPathLeft);
    c.lblNav(0).setTop(s.lblNavTop);
    c.lblNav(0).setLeft(s.lblNavLeft);
    MoveNav(c);
    c.xlogo.setTop(s.xlogo.top);
    c.xlogo.setLeft(s.xlogo.left);
    c.xlogo.setHeight(s.xlogo.height);
    c.xlogo.setWidth(s.xlogo.width);

    // The row's height is measured again when the strip is laid out; until then one line of the form's
    // font stands for it.
    runtime::Label& row = c.ll(0);
    row.setCaption("Sgj");
    row.setAutoSize(false);
    row.setHeight(row.form().textHeight("Sgj"));
    row.setVisible(false);

    strip.listCols = s.listCols;
    strip.rowAlign = s.rowAlign;
    strip.stripGap = s.stripGap;
    return whyNotRead(files, skinFolder, read, file.has_value());
}

void MoveNav(MainControls& c)
{
    for (int i = 1; i <= 4; ++i)
        c.lblNav(i).setTop(c.lblNav(0).top());
    for (int i = 1; i <= 4; ++i)
        c.lblNav(i).setLeft(c.lblNav(i - 1).left() + c.lblNav(i - 1).width());
}

void makeVis(MainControls& c, const config::RunState& run)
{
    c.lblPath.setVisible(run.skin.showPath);
    for (int i = 0; i <= 4; ++i)
        c.lblNav(i).setVisible(run.skin.showNav);
}

void KillDisplay(MainControls& c, config::RunState& run)
{
    runtime::Form& main = c.lblPath.form();
    core::FailureLog& log = main.failures();
    core::passOver(log, [&] {
        if (run.listType != "list" && !run.listType.empty())
            DelList2(c);
        else
            DelList(c);
    });
    for (runtime::Control* panel : std::initializer_list<runtime::Control*> {
             &c.xFlyer, &c.xScreen, &c.xCabinet, &c.xMarquee, &c.xlogo })
        panel->setVisible(false);
    run.showLogo = false;
    c.lblPath.setCaption("1");
    c.lblPath.setAutoSize(false);
    c.lblPath.setVisible(false);
    for (int i = 1; i <= 4; ++i)
        c.lblNav(i).setVisible(false);
    core::passOver(log, [&] {
        runtime::Form* blanker = main.stack().existing("blanker");
        runtime::Timer* timexit = blanker ? blanker->findTimer("timexit") : nullptr;
        if (!timexit)
            throw std::runtime_error("the start-up form is gone; the browser will not come back");
        timexit->setEnabled(true);
    });
    main.unload();
}

} // namespace ombrel::browser
