// PictureStrip: building the grid of picture cells and filling it around the selection.
#include "browser/PictureStrip.h"

#include "browser/PreviewPanels.h"
#include "core/PassOver.h"
#include "core/VbMath.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace ombrel::browser {

namespace {

    // Every cell but xlist(0), which the form was designed with and cannot be unloaded.
    void unloadLoadedCells(MainControls& c, core::FailureLog& log)
    {
        for (int i = c.xlist.ubound(); i >= 1; --i)
            core::passOver(log, [&] { c.xlist.unload(i); });
    }

    // The name of catalogue row n; nullopt for a row outside the table, which has no name to read.
    std::optional<std::string> rowName(const catalogue::Table& games, int n)
    {
        if (n < 0 || n > games.maxRows())
            return std::nullopt;
        return games.at(n, 1);
    }

} // namespace

void DelList2(MainControls& c)
{
    core::FailureLog& log = c.Shape1.form().failures();
    core::passOver(log, [&] { c.xlist(0).setVisible(false); });
    unloadLoadedCells(c, log);
}

void SetListSize2(MainControls& c, config::RunState& run, StripLayout& layout)
{
    auto& first = c.xlist(0);
    first.setVisible(true);
    unloadLoadedCells(c, c.Shape1.form().failures());
    first.setTop(c.Shape1.top());
    first.setLeft(c.Shape1.left());

    if (first.width() <= 0 || first.height() <= 0)
        throw std::domain_error("the picture strip's cells have no size");
    // Cells scale with the rectangle, so the count is the skin's and not the screen's. It leaves the gaps
    // out: a wide gap makes the rows below wrap early and the last cells fall off the bottom.
    const double tried
        = core::vbInt(c.Shape1.width() / first.width()) * core::vbInt(c.Shape1.height() / first.height());
    const double cells = std::min(static_cast<double>(kMaxStripRows), tried);
    const double gap = layout.stripGap;
    const double right = c.Shape1.left() + c.Shape1.width();
    const double bottom = c.Shape1.top() + c.Shape1.height();
    for (int j = 1; j <= cells - 1; ++j) {
        auto& cell = c.xlist.load(j);
        const auto& before = c.xlist(j - 1);
        cell.setVisible(true);
        cell.setTop(before.top());
        cell.setLeft(before.left() + before.width() + gap);
        // The right edge forgives one gap of overhang; the bottom edge forgives nothing.
        if (cell.left() + cell.width() > right + gap) {
            cell.setLeft(first.left());
            cell.setTop(before.top() + before.height() + gap);
            if (cell.top() + cell.height() > bottom) {
                c.xlist.unload(j);
                break;
            }
        }
    }

    run.midRow = static_cast<int>(core::vbInt(c.xlist.count() / 2.0));
    // The frame stands out 50 twips on every side of the middle cell, which sits in front of it.
    auto& middle = c.xlist(run.midRow);
    c.shphigh.setHeight(middle.height() + 100);
    c.shphigh.setWidth(middle.width() + 100);
    c.shphigh.setTop(middle.top() - 50);
    c.shphigh.setLeft(middle.left() - 50);
    middle.zOrder(0);
}

void shootScreens(MainControls& c, const PictureStripContext& ctx, const catalogue::Table& games,
    const std::string& fallback)
{
    core::FailureLog& log = c.Shape1.form().failures();
    const int midRow = ctx.run.midRow;
    const int count = c.xlist.count();
    const int r = c.List1.listIndex() + 1;

    // A game without a picture is the usual case, not a failure: only a picture that is there and cannot
    // be read reaches the loader, which logs it. The name is taken as the list has it, so a program of
    // the Extras keeps its extension before ".png".
    auto showGame = [&](runtime::PictureControl& cell, const std::string& name) {
        if (auto found = ctx.files.resolveFile(cellPictureFile(ctx.home, ctx.run.scanDir, name)))
            cell.setFileName(*found);
    };

    core::passOver(log, [&] { c.lblPath.setCaption(c.List1.list(c.List1.listIndex())); });

    // Every cell starts from the skin's picture; those that have it already are not loaded again.
    const std::string standIn = skinFile(ctx.files, ctx.run, ctx.saved, fallback);
    for (int i = 0; i < count; ++i) {
        core::passOver(log, [&] {
            auto& cell = c.xlist(i);
            if (cell.fileName() != standIn)
                cell.setFileName(standIn);
        });
    }

    core::passOver(log, [&] { showGame(c.xlist(midRow), rowName(games, r).value_or("")); });

    // Before the middle. Row 0 is always empty, so the pass that reaches it hides its cell and all cells
    // before it, which stand for no row at all. A list too short to reach it (the empty list) leaves
    // those cells showing the skin's picture.
    for (int k = 0; k < midRow; ++k) {
        core::passOver(log, [&] {
            auto& cell = c.xlist(k);
            const std::optional<std::string> name = rowName(games, r - (midRow - k));
            if (name && name->empty()) {
                for (int i = 0; i <= k; ++i)
                    c.xlist(i).setVisible(false);
                return;
            }
            if (name)
                showGame(cell, *name);
            cell.setVisible(true);
        });
    }

    // After the middle: the first empty row hides the rest. Only that first hiding needs to reach the
    // last cell; the cells past a later empty row were hidden then and no cell before them shows them.
    bool restHidden = false;
    for (int k = midRow + 1; k < count; ++k) {
        core::passOver(log, [&] {
            auto& cell = c.xlist(k);
            const std::optional<std::string> name = rowName(games, r + (k - midRow));
            if (name && name->empty()) {
                for (int i = k; i < (restHidden ? k + 1 : count); ++i)
                    c.xlist(i).setVisible(false);
                restHidden = true;
                return;
            }
            if (name)
                showGame(cell, *name);
            cell.setVisible(true);
        });
    }

    for (int i = 0; i < count; ++i) {
        core::passOver(log, [&] {
            auto& cell = c.xlist(i);
            cell.setBackColor(ctx.scheme.schemeBack);
            cell.setProperty(124, 0);
        });
    }
}

} // namespace ombrel::browser
