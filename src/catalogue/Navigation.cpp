// Navigator: the current list on screen, the walk among the lists, pages, and the strip's text.
#include "catalogue/Navigation.h"

#include "catalogue/PictureFolders.h"

#include "core/PassOver.h"
#include "runtime/InputEvent.h"

#include <array>
#include <optional>
#include <stdexcept>
#include <utility>

namespace ombrel::catalogue {

namespace {

struct FixedList
{
    const char* caption;
    const char* logo;
};

// The fixed emulators and the Extras, lists 21 to 27. The Extras' logo name is fixed, capital E and
// all, whatever the settings say.
constexpr std::array<FixedList, 7> kFixedLists { {
    { "Impact Roms:", "impact.gif" },
    { "Modeler Roms:", "modeler.gif" },
    { "Ultra 64:", "u64.gif" },
    { "Visual Pinball:", "vp.gif" },
    { "S11 Emu:", "s11.gif" },
    { "Daphne:", "daphne.gif" },
    { "Extras:", "Extras.gif" },
} };

const FixedList* fixedList(int path)
{
    if (path < config::kImpactPath || path > config::kExtrasPath)
        return nullptr;
    return &kFixedLists[static_cast<size_t>(path - config::kImpactPath)];
}

std::string captionOf(const config::Settings& settings, int path)
{
    if (path >= 1 && path <= config::kUserPaths)
        return settings.pathName[static_cast<size_t>(path)];
    const FixedList* fixed = fixedList(path);
    return fixed ? fixed->caption : "";
}

std::string logoOf(const config::Settings& settings, int path)
{
    if (path >= 1 && path <= config::kUserPaths)
        return settings.logoFile[static_cast<size_t>(path)];
    const FixedList* fixed = fixedList(path);
    return fixed ? fixed->logo : "";
}

} // namespace

Navigator::Navigator(CatalogueContext context, NavigationControls controls)
    : m_ctx(std::move(context))
    , m_ui(std::move(controls))
{
}

void Navigator::loadLists()
{
    const config::Settings& settings = m_ctx.settings;
    config::RunState& run = m_ctx.run;

    // Without the master list no list file is read; the current list is still shown, so that the
    // strip says "No Roms Found" when no list holds a game. NOTE: a scan started after this finds
    // nothing; it must not overwrite a list file that already holds games.
    if (!readGameList(m_ctx)) {
        m_ui.Main.failures().note(std::string(kGameListFile) + ": cannot be read");
        populateList();
        return;
    }

    for (int n = 1; n <= config::kUserPaths; ++n) {
        if (!settings.romDir[static_cast<size_t>(n)].empty()) {
            run.curPath = n;
            m_ui.Main.failures().note(makeArrays(m_ctx, listFileName(n)));
        }
    }
    // Ultra 64 has two folders and one list file: with both set, the file is read twice over the same
    // rows.
    const std::array<std::pair<const std::string*, int>, 7> fixedFolders { {
        { &settings.impactDir, config::kImpactPath },
        { &settings.modelerDir, config::kModelerPath },
        { &settings.u64Dir, config::kU64Path },
        { &settings.u64Dir2, config::kU64Path },
        { &settings.vpDir, config::kVpPath },
        { &settings.s11Dir, config::kS11Path },
        { &settings.daphneDir, config::kDaphnePath },
    } };
    for (const auto& [folder, path] : fixedFolders) {
        if (!folder->empty()) {
            run.curPath = path;
            m_ui.Main.failures().note(makeArrays(m_ctx, listFileName(path)));
        }
    }

    run.extraPath = m_ctx.home + kExtrasFile;
    CheckForExtras(m_ctx, run.extraPath);
    if (run.fileFound) {
        run.curPath = config::kExtrasPath;
        m_ui.Main.failures().note(makeArrays(m_ctx, listFileName(config::kExtrasPath)));
    }

    populateList();
    if (m_ui.List1.visible() && (!m_ui.mayFocusMain || m_ui.mayFocusMain()))
        core::passOver(m_ui.Main.failures(), [&] { m_ui.Main.setFocus(); });
    gNextPath();
}

bool Navigator::anyGamesToShow() const
{
    // Only these lists count: games in lists 7 to 20 or in the Daphne list alone still give the
    // message.
    const Catalogue& catalogue = m_ctx.catalogue;
    for (int n : { 1, 2, 3, 4, 5, 6, 21, 22, 23, 24, 25 }) {
        if (!catalogue.games[static_cast<size_t>(n)].at(1, 1).empty())
            return true;
    }
    return !catalogue.extras.at(1, 1).empty();
}

void Navigator::populateList()
{
    const config::Settings& settings = m_ctx.settings;
    config::RunState& run = m_ctx.run;
    runtime::ListBox& list1 = m_ui.List1;

    if (!anyGamesToShow()) {
        if (runtime::Label* middle = m_ui.ll.get(run.midRow))
            middle->setCaption(kNoRomsMessage);
        return;
    }

    list1.clear();
    list1.setVisible(false);
    run.gi = 1;
    m_ui.lblPath.setCaption(captionOf(settings, run.curPath));
    m_ui.xlogo.setVisible(run.showLogo);
    // A logo that cannot be loaded leaves the one before it on screen.
    std::string logo = logoOf(settings, run.curPath);
    if (!logo.empty())
        m_ui.xlogo.setPicture(m_ctx.home + logo);

    if (const Table* table = m_ctx.catalogue.list(run.curPath)) {
        while (run.gi <= kMaxGamesPerList && !table->at(run.gi, 1).empty()) {
            list1.addItem(table->at(run.gi, 2));
            ++run.gi;
        }
    }

    list1.setVisible(true);
    core::passOver(m_ui.Main.failures(), [&] { m_ui.Main.setFocus(); });
    if (list1.listCount() >= 1)
        core::passOver(m_ui.Main.failures(), [&] { list1.setListIndex(0); });
}

void Navigator::walk(int direction)
{
    runtime::ListBox& list1 = m_ui.List1;
    int& curPath = m_ctx.run.curPath;
    if (!list1.visible())
        return;
    // Lists without games, switched-off paths among them, are passed by; one full circle is the most.
    for (int step = 0; step < kLists; ++step) {
        list1.clear();
        if (direction > 0)
            curPath = curPath >= kLists ? 1 : curPath + 1;
        else
            curPath = curPath <= 1 ? kLists : curPath - 1;
        populateList();
        if (list1.visible() && list1.listCount() >= 1) {
            core::passOver(m_ui.Main.failures(), [&] { list1.setListIndex(0); });
            return;
        }
    }
}

void Navigator::gNextPath()
{
    walk(+1);
}

void Navigator::gPrevPath()
{
    walk(-1);
}

void Navigator::gNextPage()
{
    runtime::ListBox& list1 = m_ui.List1;
    int count = list1.listCount();
    int index = list1.listIndex();
    int midRow = m_ctx.run.midRow;
    core::passOver(m_ui.Main.failures(), [&] { list1.setListIndex(count - 1 - index <= midRow ? count - 1 : index + midRow); });
}

void Navigator::gPrevPage()
{
    runtime::ListBox& list1 = m_ui.List1;
    int index = list1.listIndex();
    int midRow = m_ctx.run.midRow;
    core::passOver(m_ui.Main.failures(), [&] { list1.setListIndex(index <= midRow ? 0 : index - midRow); });
}

void Navigator::RefreshList()
{
    config::RunState& run = m_ctx.run;
    if (run.listType.empty())
        run.listType = "list";

    if (run.listType == "list") {
        const runtime::ListBox& list1 = m_ui.List1;
        int selected = list1.listIndex();
        int midRow = run.midRow;
        // With no list on hand the middle row keeps what the catalogue wrote there ("No Roms Found..."):
        // the message must stay in the strip until the player scans again.
        const bool keepMessage = list1.listCount() == 0 && !anyGamesToShow();
        // Rows that were never made are passed by.
        for (int k = m_ui.ll.lbound(); k <= m_ui.ll.ubound(); ++k) {
            if (k == midRow && keepMessage)
                continue;
            if (runtime::Label* row = m_ui.ll.get(k))
                row->setCaption(list1.list(selected + (k - midRow)));
        }
        return;
    }

    const PictureKind* kind = pictureKindOf(run.listType);
    if (!kind)
        return; // a word the picture strip does not know: the cells stay as they are
    const runtime::ListBox& list1 = m_ui.List1;
    auto base = pictureBase(m_ctx.settings, m_ctx.catalogue, run.curPath, list1.listIndex() + 1, list1.text());
    if (!base)
        return;
    run.scanDir = *base + std::string(kind->folder);
    if (m_ui.shootScreens)
        m_ui.shootScreens(run.curPath, std::string(kind->fallback));
}

void Navigator::wireMouse()
{
    // lblNav(2), the middle one, does nothing.
    const std::array<std::pair<int, void (Navigator::*)()>, 4> navButtons { {
        { 0, &Navigator::gPrevPath },
        { 1, &Navigator::gPrevPage },
        { 3, &Navigator::gNextPage },
        { 4, &Navigator::gNextPath },
    } };
    for (const auto& [index, operation] : navButtons) {
        if (runtime::Label* button = m_ui.lblNav.get(index))
            button->onClick = [this, operation = operation] { (this->*operation)(); };
    }
    m_ui.lblPath.onMouseDown = [this](int, int shift, double, double) {
        if (shift == runtime::kCtrlMask)
            gPrevPath();
        else
            gNextPath();
    };
    m_ui.xlogo.onClick = [this] { gNextPath(); };
}

} // namespace ombrel::catalogue
