// ListStrip: building the rows of the text strip, and the pulse of its middle row.
#include "browser/ListStrip.h"

#include "core/PassOver.h"
#include "core/VbMath.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace ombrel::browser {

namespace {

    // Every row but ll(0), which the form was designed with and cannot be unloaded.
    void unloadLoadedRows(MainControls& c, core::FailureLog& log)
    {
        for (int i = c.ll.ubound(); i >= 1; --i)
            core::passOver(log, [&] { c.ll.unload(i); });
    }

} // namespace

void DelList(MainControls& c)
{
    core::FailureLog& log = c.Shape1.form().failures();
    core::passOver(log, [&] { c.ll(0).setVisible(false); });
    unloadLoadedRows(c, log);
}

void SetListSize(MainControls& c, config::RunState& run, StripLayout& layout, const Scheme& scheme)
{
    core::FailureLog& log = c.Shape1.form().failures();
    auto& cols = layout.listCols;
    if (cols == 0.0)
        cols = 1;
    if (run.listType != "list" && !run.listType.empty()) {
        DelList(c);
        core::passOver(log, [&] { SetListSize2(c, run, layout); });
        core::passOver(log, [&] { c.shphigh.setVisible(true); });
        return;
    }
    DelList2(c);
    core::passOver(log, [&] { c.shphigh.setVisible(false); });
    // What a rebuild finds of the last strip goes, all but ll(0).
    unloadLoadedRows(c, log);
    // An empty column count compares as no number here, so the first row is right-aligned; the rows of
    // one column take rowAlign below in any case.
    core::passOver(log, [&] { c.ll(0).setAlignment(cols > 1.0 ? 2 : 1); });
    if (!cols)
        cols = 1;
    const double columns = *cols;

    // The height of one row is that of one line of text in the rows' font; setting AutoSize moves and
    // widens the label, so it is put back afterwards.
    core::passOver(log, [&] {
        auto& first = c.ll(0);
        first.setTop(c.Shape1.top());
        first.setLeft(c.Shape1.left());
        first.setWidth(c.Shape1.width() / columns);
    });
    core::passOver(log, [&] {
        auto& first = c.ll(0);
        first.setWordWrap(false);
        first.setCaption("OStestjjgg");
        first.setVisible(true);
    });
    core::passOver(log, [&] {
        c.ll(0).setAutoSize(true);
        c.ll(0).setAutoSize(false);
    });
    core::passOver(log, [&] {
        c.ll(0).setWidth(c.Shape1.width() / columns);
        c.ll(0).setLeft(c.Shape1.left());
    });

    // The rectangle scales with the form and the font does not: a larger screen gets more rows.
    double rows = 0;
    core::passOver(log, [&] {
        const double rowHeight = c.ll(0).height();
        if (rowHeight <= 0)
            throw std::domain_error("the list's rows have no height");
        const double perColumn = core::vbInt(c.Shape1.height() / rowHeight);
        rows = std::min(static_cast<double>(kMaxStripRows), columns * perColumn);
    });
    core::passOver(log, [&] { c.ll(0).setCaption(""); });

    // Rows go down a column; one that would pass the rectangle's bottom starts the next column.
    for (int j = 1; j <= rows - 1; ++j) {
        core::passOver(log, [&] {
            auto& row = c.ll.load(j);
            const auto& above = c.ll(j - 1);
            row.setAutoSize(false);
            row.setVisible(true);
            row.setWidth(c.ll(0).width());
            row.setLeft(above.left());
            row.setTop(above.top() + above.height());
            if (row.top() + row.height() > c.Shape1.top() + c.Shape1.height()) {
                row.setTop(c.ll(0).top());
                row.setLeft(above.left() + above.width());
            }
        });
    }
    run.midRow = static_cast<int>(core::vbInt(c.ll.count() / 2.0));

    if (columns <= 1) {
        for (int k = 0; k <= c.ll.ubound(); ++k)
            core::passOver(log, [&] { c.ll(k).setAlignment(layout.rowAlign); });
    } else {
        // Only the selected name may grow past its column's width.
        core::passOver(log, [&] { c.ll(run.midRow).setAutoSize(true); });
    }
    for (int k = 0; k <= c.ll.ubound(); ++k)
        core::passOver(log, [&] { c.ll(k).zOrder(0); });
    core::passOver(log, [&] {
        auto& middle = c.ll(run.midRow);
        middle.setWordWrap(false);
        middle.zOrder(0);
        middle.setForeColor(scheme.schemeBack);
        middle.setBackColor(scheme.schemeFore);
        middle.setFontBold(true);
    });
}

std::optional<double> pulseFactor(int highStep)
{
    // Up from an eighth to full over four ticks, held one tick, and down again.
    static constexpr std::array<double, 7> kFactors { 0.125, 0.25, 0.5, 1, 1, 0.5, 0.25 };
    if (highStep < 0 || highStep >= static_cast<int>(kFactors.size()))
        return std::nullopt;
    return kFactors[static_cast<size_t>(highStep)];
}

void pulseHighlight(MainControls& c, int midRow, uint32_t schemeFore, int& highStep)
{
    runtime::Label* middle = c.ll.get(midRow);
    if (middle && !middle->visible())
        middle = nullptr;
    if (middle)
        middle->setBackStyle(0);
    const std::optional<double> factor = pulseFactor(highStep);
    highStep = factor ? highStep + 1 : 0;
    if (!factor)
        return;
    const uint32_t colour = core::scaleColour(schemeFore, *factor);
    if (middle)
        middle->setForeColor(colour);
    c.shphigh.setBackColor(colour);
}

} // namespace ombrel::browser
