// ListStrip: the rows of the text strip.
#include "browser/ListStrip.h"

#include "core/VbMath.h"

#include <algorithm>

namespace ombrel::browser {

void DelList(MainControls& c)
{
    c.ll(0).setVisible(false);
    for (int i = c.ll.ubound(); i >= 1; --i)
        c.ll.unload(i);
}

void SetListSize(MainControls& c, config::RunState& run, StripLayout& layout)
{
    if (layout.listCols <= 0)
        layout.listCols = 1;
    if (run.listType != "list" && !run.listType.empty()) {
        // FIXME: the picture strip is built here once picture strips exist; until then the text strip stands.
        run.listType = "list";
    }
    c.shphigh.setVisible(false);
    DelList(c);
    auto& first = c.ll(0);
    first.setAlignment(layout.listCols > 1 ? 2 : 1);

    // The height of one row is that of one line of text in the row's font.
    const double columnWidth = c.Shape1.width() / layout.listCols;
    first.setTop(c.Shape1.top());
    first.setLeft(c.Shape1.left());
    first.setWidth(columnWidth);
    first.setWordWrap(false);
    first.setCaption("OStestjjgg");
    first.setVisible(true);
    first.setAutoSize(true);
    first.setAutoSize(false);
    first.setWidth(columnWidth);
    first.setLeft(c.Shape1.left());
    if (first.height() <= 0)
        return;

    double perColumn = core::vbInt(c.Shape1.height() / first.height());
    int rows = static_cast<int>(std::min(4000.0, layout.listCols * perColumn));
    first.setCaption("");
    for (int j = 1; j < rows; ++j) {
        auto& row = c.ll.load(j);
        auto& above = c.ll(j - 1);
        row.setAutoSize(false);
        row.setVisible(true);
        row.setWidth(first.width());
        row.setLeft(above.left());
        row.setTop(above.top() + above.height());
        if (row.top() + row.height() > c.Shape1.top() + c.Shape1.height()) {
            row.setTop(first.top());
            row.setLeft(above.left() + above.width());
        }
    }
    run.midRow = static_cast<int>(core::vbInt(c.ll.count() / 2.0));
    if (layout.listCols <= 1)
        for (int k = 0; k <= c.ll.ubound(); ++k)
            c.ll(k).setAlignment(layout.rowAlign);
    if (layout.listCols > 1)
        c.ll(run.midRow).setAutoSize(true);
    for (int k = 0; k <= c.ll.ubound(); ++k)
        c.ll(k).zOrder(0);
}

} // namespace ombrel::browser
