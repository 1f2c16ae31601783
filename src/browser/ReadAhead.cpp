// ReadAhead: the pictures of the next steps of the selection.
#include "browser/ReadAhead.h"

#include "browser/PreviewPanels.h"
#include "catalogue/PictureFolders.h"
#include "platform/Files.h"

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <utility>

namespace ombrel::browser {

namespace {

    // A preview panel the skin shows: its kind (into catalogue::kPictureKinds) and its box.
    struct Panel
    {
        size_t kind;
        runtime::PixelSize box;
    };

    runtime::PixelSize pixelSizeOf(const runtime::Control& control)
    {
        const runtime::PixelRect rect = control.pixelRect(0, 0);
        return { rect.w, rect.h };
    }

} // namespace

// One round of wishes: appends to the kept vector, reusing the strings already in it.
class ReadAhead::Builder {
public:
    Builder(const MainControls& c, const ReadAheadContext& ctx, const catalogue::Table& table,
        std::vector<platform::PictureWish>& wishes)
        : m_c(c)
        , m_ctx(ctx)
        , m_table(table)
        , m_wishes(wishes)
    {
        const std::array<std::pair<const runtime::PictureControl*, bool>, 4> panels { {
            { &c.xMarquee, ctx.run.skin.showMarquee },
            { &c.xScreen, ctx.run.skin.showSnap },
            { &c.xFlyer, ctx.run.skin.showFlyer },
            { &c.xCabinet, ctx.run.skin.showCabinet },
        } };
        // A panel the skin turns off is never painted, so its picture is not worth a worker's time.
        for (size_t kind = 0; kind < panels.size(); ++kind) {
            const runtime::PixelSize box = pixelSizeOf(*panels[kind].first);
            if (panels[kind].second && box.w > 0 && box.h > 0)
                m_panels[m_panelCount++] = Panel { kind, box };
        }
        m_stripKind = catalogue::pictureKindOf(ctx.run.listType);
        const runtime::PictureControl* cell = c.xlist.get(ctx.run.midRow);
        if (!cell)
            cell = c.xlist.get(0);
        if (m_stripKind && cell) {
            m_cells = c.xlist.count();
            m_cellBox = pixelSizeOf(*cell);
        }
    }

    // The panels' pictures when the selection stands on list entry `entry`.
    void addPanels(int entry)
    {
        const int row = entry + 1;
        const std::string& name = m_table.at(row, 1);
        if (name.empty() || m_panelCount == 0)
            return; // no game there; the panels hide
        const std::optional<std::string> base = baseOf(entry);
        if (!base)
            return;
        for (size_t i = 0; i < m_panelCount; ++i) {
            const catalogue::PictureKind& kind = catalogue::kPictureKinds[m_panels[i].kind];
            const std::string folder = *base + std::string(kind.folder);
            try {
                add(m_panels[i].box, pictureFile(m_ctx.home, folder, name, m_ctx.run.curPath, trimsBlanks(kind)));
            } catch (const std::out_of_range&) {
                // A program's name too short to lose its extension: the panel loads nothing either.
            }
        }
    }

    // The cells of the picture strip that a selection on `entry` shows and that no wish covers yet.
    // The cells hold names as the catalogue has them, below the selected game's folder.
    void addCells(int entry)
    {
        if (m_cells == 0)
            return;
        const std::optional<std::string> base = baseOf(entry);
        if (!base)
            return;
        // Where each entry has its own folder, a selection elsewhere shows even the same rows from
        // another folder: they are new cells.
        if (*base != m_cellBase) {
            m_cellBase = *base;
            m_lo = 0;
            m_hi = -1;
        }
        const int midRow = m_ctx.run.midRow;
        const int first = entry - midRow;
        const int last = entry + (m_cells - 1 - midRow);
        for (int at = first; at <= last; ++at) {
            if (at >= m_lo && at <= m_hi)
                continue;
            const std::string& name = m_table.at(at + 1, 1);
            if (at < 0 || name.empty())
                continue; // the cell is hidden or keeps the skin's own picture
            add(m_cellBox, cellPictureFile(m_ctx.home, m_cellBase + std::string(m_stripKind->folder), name));
        }
        if (m_lo > m_hi) {
            m_lo = first;
            m_hi = last;
        } else {
            m_lo = std::min(m_lo, first);
            m_hi = std::max(m_hi, last);
        }
    }

    // The vector as wished: the strings past this round's wishes are dropped.
    void close() { m_wishes.resize(m_used); }

private:
    std::optional<std::string> baseOf(int entry) const
    {
        // Only the Ultra 64 list picks its folder by the entry's text; the others need no copy of it.
        const std::string text = m_ctx.run.curPath == config::kU64Path ? m_c.List1.list(entry) : std::string();
        return catalogue::pictureBase(m_ctx.settings, m_ctx.catalogue, m_ctx.run.curPath, entry + 1, text);
    }

    // The loader reads '\' as '/'; a wish names the file as the loader will ask for it.
    void add(runtime::PixelSize box, std::string path)
    {
        if (m_used == m_wishes.size())
            m_wishes.emplace_back();
        platform::PictureWish& wish = m_wishes[m_used++];
        wish.box = box;
        wish.path = platform::toNativePath(path);
    }

    const MainControls& m_c;
    const ReadAheadContext& m_ctx;
    const catalogue::Table& m_table;
    std::vector<platform::PictureWish>& m_wishes;
    size_t m_used = 0;
    std::array<Panel, 4> m_panels {};
    size_t m_panelCount = 0;
    const catalogue::PictureKind* m_stripKind = nullptr;
    int m_cells = 0;
    runtime::PixelSize m_cellBox;
    std::string m_cellBase;
    int m_lo = 0; // the entries whose cells are wished for already
    int m_hi = -1;
};

void ReadAhead::wish(const MainControls& c, const ReadAheadContext& ctx)
{
    if (ctx.run.curPath != m_path) {
        if (m_path != kNoPath)
            m_step = 0;
        m_path = ctx.run.curPath;
    }
    const catalogue::Table* table = ctx.catalogue.list(ctx.run.curPath);
    const int count = c.List1.listCount();
    const int selected = c.List1.listIndex();
    if (!table || selected < 0 || selected >= count) {
        m_wishes.clear();
        ctx.images.expect(m_wishes);
        return;
    }

    Builder builder(c, ctx, *table, m_wishes);
    builder.addPanels(selected);
    builder.addCells(selected);

    // The steps of a held key, as its timer makes them: a row stops at the ends, a page stops on them.
    int firstStep = selected;
    for (int at = selected, steps = 0; m_step != 0 && steps < kStepsAhead; ++steps) {
        const int reached = std::clamp(at + m_step, 0, count - 1);
        if (reached == at)
            break;
        at = reached;
        if (steps == 0)
            firstStep = at;
        builder.addPanels(at);
        builder.addCells(at);
    }
    // Only the first step can have reached a neighbour.
    for (const int neighbour : { selected + 1, selected - 1 }) {
        if (neighbour < 0 || neighbour >= count || neighbour == firstStep)
            continue;
        builder.addPanels(neighbour);
        builder.addCells(neighbour);
    }
    builder.close();
    ctx.images.expect(m_wishes);
}

} // namespace ombrel::browser
