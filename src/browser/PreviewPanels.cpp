// PreviewPanels: the selected game's pictures and the selection's click.
#include "browser/PreviewPanels.h"

#include "browser/MainControls.h"
#include "core/PassOver.h"
#include "core/TextCodec.h"
#include "runtime/Form.h"
#include "runtime/controls/ListBox.h"

#include <array>
#include <stdexcept>

namespace ombrel::browser {

namespace {

// Blanks only: a tab in a folder or name stays, as the owner wrote it.
std::string_view trimSpaces(std::string_view text)
{
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Text less its last four characters: a UTF-8 name loses four letters, not four bytes.
std::string_view withoutLastFour(std::string_view text)
{
    const bool utf8 = core::isValidUtf8(text);
    size_t end = text.size();
    for (int n = 0; n < 4; ++n) {
        if (end == 0)
            throw std::out_of_range("\"" + std::string(text) + "\" is too short to lose an extension");
        --end;
        while (utf8 && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
            --end;
    }
    return text.substr(0, end);
}

void checkRow(int row)
{
    if (row < 0 || row > catalogue::kMaxGamesPerList)
        throw std::out_of_range("row " + std::to_string(row) + " is outside the catalogue");
}

// The folder that holds the kinds' folders for the selected row. A list number outside the lists
// still finds an art folder while the settings have one of that number; past them there is none.
std::string baseFolder(const PreviewContext& ctx, const runtime::ListBox& List1)
{
    const int path = ctx.run.curPath;
    const int row = List1.listIndex() + 1;
    if (path == config::kExtrasPath)
        checkRow(row); // the Extras' folders are a column of the catalogue
    if (auto base = catalogue::pictureBase(ctx.settings, ctx.catalogue, path, row, List1.text()))
        return *base;
    if (path < 0 || static_cast<size_t>(path) >= ctx.settings.artDir.size())
        throw std::out_of_range("list " + std::to_string(path) + " has no picture folder");
    return ctx.settings.artDir[static_cast<size_t>(path)];
}

void clickSound(const PreviewContext& ctx)
{
    // Without a key map there is no click: a cabinet that has not been set up yet stays quiet.
    if (!ctx.keyExit || *ctx.keyExit == 0 || ctx.saved.muted)
        return;
    platform::MediaPlayer& player = ctx.mpFX;
    if (player.playState() == platform::kPlaying)
        return;
    player.setFileName(skinFile(ctx.files, ctx.run, ctx.saved, "pop.mp3"));
    if (!player.fileName().empty())
        player.play();
}

} // namespace

std::string skinFile(platform::Files& files, const config::RunState& run, const config::SavedState& saved,
    const std::string& name)
{
    const std::string path = run.themesDir + saved.curSkin + name;
    return files.resolveFile(path).value_or(platform::toNativePath(path));
}

const std::string& gameName(const catalogue::Catalogue& catalogue, int path, int row)
{
    const catalogue::Table* list = catalogue.list(path);
    if (!list)
        throw std::out_of_range("list " + std::to_string(path) + " holds no games");
    checkRow(row);
    return list->at(row, 1);
}

bool trimsBlanks(const catalogue::PictureKind& kind)
{
    return kind.listType == "marquee" || kind.listType == "snap";
}

std::string pictureFile(
    std::string_view home, std::string_view scanDir, std::string_view name, int path, bool trim)
{
    std::string whole = std::string(scanDir) + std::string(name);
    std::string_view stem = trim ? trimSpaces(whole) : std::string_view(whole);
    if (path == config::kExtrasPath)
        stem = withoutLastFour(stem);
    const bool relative = stem.empty() || (stem.front() != '/' && stem.front() != '\\');
    return (relative ? std::string(home) : std::string()) + std::string(stem) + ".png";
}

std::string cellPictureFile(std::string_view home, std::string_view scanDir, std::string_view name)
{
    return pictureFile(home, scanDir, name, 0, false); // list 0: no extension to cut
}

void ShowFileSystemType(platform::Files& files, const std::string& home,
    const catalogue::Catalogue& catalogue, config::RunState& run, const runtime::ListBox& List1)
{
    if (run.curPath < 1 || run.curPath > config::kExtrasPath)
        return;
    const std::string& name = gameName(catalogue, run.curPath, List1.listIndex() + 1);
    run.fileFound = files.fileExists(pictureFile(home, run.scanDir, name, run.curPath, false));
}

void cabRefresh(MainControls& c, const PreviewContext& ctx)
{
    core::FailureLog& log = c.List1.form().failures();
    config::RunState& run = ctx.run;
    core::passOver(log, [&] { clickSound(ctx); });

    struct Panel
    {
        runtime::PictureControl& control;
        bool wanted; // the skin shows this panel
    };
    const std::array<Panel, catalogue::kPictureKinds.size()> panels { {
        { c.xMarquee, run.skin.showMarquee },
        { c.xScreen, run.skin.showSnap },
        { c.xFlyer, run.skin.showFlyer },
        { c.xCabinet, run.skin.showCabinet },
    } };
    for (size_t i = 0; i < panels.size(); ++i) {
        const catalogue::PictureKind& kind = catalogue::kPictureKinds[i];
        runtime::PictureControl& panel = panels[i].control;
        core::passOver(log, [&] { run.scanDir = baseFolder(ctx, c.List1) + std::string(kind.folder); });
        core::passOver(log, [&] { ShowFileSystemType(ctx.files, ctx.home, ctx.catalogue, run, c.List1); });
        if (!run.fileFound) {
            // A game without the picture leaves an empty place; the default picture is only put in on the
            // way out, where the picture strip may copy it. A missing one hides the panel all the same.
            if (panel.visible()) {
                panel.setFileName(run.themesDir + ctx.saved.curSkin + std::string(kind.fallback));
                panel.setVisible(false);
            }
            continue;
        }
        // A panel the skin turns off is never shown, but its picture is still loaded for curPic.
        if (!panel.visible() && panels[i].wanted) {
            panel.setVisible(true);
            panel.setBackColor(ctx.schemeBack);
        }
        // NOTE: a picture that cannot be read is no failure of cabRefresh: the panel keeps its old one and
        // curPic reads that back.
        core::passOver(log, [&] {
            const int row = c.List1.listIndex() + 1;
            const std::string& name = gameName(ctx.catalogue, run.curPath, row);
            panel.setFileName(pictureFile(ctx.home, run.scanDir, name, run.curPath, trimsBlanks(kind)));
        });
        run.curPic = panel.fileName();
    }
}

} // namespace ombrel::browser
