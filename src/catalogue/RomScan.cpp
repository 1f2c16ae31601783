// RomScan: the scan of every list's folder against the master list, and the list files it writes.
#include "catalogue/RomScan.h"

#include "core/FieldReader.h"
#include "core/PassOver.h"
#include "runtime/FormStack.h"

#include <exception>
#include <utility>

namespace ombrel::catalogue {

namespace {

// The ending of the file that stands for a game, by the list being written.
const char* endingFor(const std::string& listFile)
{
    if (listFile == "l23.lst")
        return ".img";
    if (listFile == "l24.lst")
        return ".vpt";
    if (listFile == "l26.lst")
        return ".txt";
    return ".zip";
}

// Whether reading the file would give a list with a first game.
bool holdsGames(const std::string& path)
{
    auto reader = core::FieldReader::open(path);
    if (!reader)
        return false;
    try {
        return !reader->atEnd() && !reader->readField().empty();
    } catch (const core::ReadError&) {
        return false;
    }
}

} // namespace

std::string listFileText(const Table& scanList)
{
    std::string text;
    for (int row = 1; row <= kMaxGamesPerList; ++row) {
        const std::string& description = scanList.at(row, 2);
        if (!description.empty())
            text += "\"" + scanList.at(row, 1) + "\",\"" + description + "\"\r\n";
    }
    return text;
}

RomScan::RomScan(CatalogueContext context, Navigator& nav, ScanControls controls)
    : m_ctx(std::move(context))
    , m_nav(nav)
    , m_ui(controls)
{
}

void RomScan::refreshAll()
{
    core::passOver(m_ui.Main.failures(), [&] {
        m_ui.List1.clear();
        m_ui.List1.setVisible(false);
    });
    core::passOver(m_ui.Main.failures(), [&] { DeleteList(); });
    core::passOver(m_ui.Main.failures(), [&] { CheckForFiles(); });
    core::passOver(m_ui.Main.failures(), [&] { m_nav.loadLists(); });
    // The scan ends on the first list whatever list the reading left on screen.
    m_ctx.run.curPath = 1;
    if (runtime::Label* top = m_ui.ll.get(0))
        top->setCaption("");
    core::passOver(m_ui.Main.failures(), [&] { m_nav.RefreshList(); });
}

void RomScan::DeleteList()
{
    // Rows of scanList past 4000 are never written to a file, so emptying the whole table is the same.
    for (int n = 1; n <= config::kDaphnePath; ++n)
        m_ctx.catalogue.games[static_cast<size_t>(n)].clear();
    m_ctx.catalogue.scanList.clear();
}

void RomScan::CheckForFiles()
{
    const config::Settings& settings = m_ctx.settings;
    config::RunState& run = m_ctx.run;

    core::passOver(m_ui.Main.failures(), [&] {
        m_ui.List1.setVisible(false);
        m_ui.List1.clear();
    });
    if (runtime::Label* middle = m_ui.ll.get(run.midRow))
        middle->setCaption(kScanningMessage);
    // The scan gives the event loop no turn, so the message is painted here or never.
    repaint();
    scanCount = 1;
    run.gi = 1;
    ScanScope scope(*this);

    for (int n = 1; n <= config::kUserPaths; ++n) {
        const std::string& romDir = settings.romDir[static_cast<size_t>(n)];
        if (!romDir.empty())
            scanOne("path " + std::to_string(n) + ": " + romDir, romDir, listFileName(n));
    }
    if (!settings.impactDir.empty())
        scanOne("Impact Roms: ", settings.impactDir + "roms\\", listFileName(config::kImpactPath));
    if (!settings.modelerDir.empty())
        scanOne("Modeler Roms: ", settings.modelerDir + "roms\\", listFileName(config::kModelerPath));
    if (!settings.u64Dir.empty() || !settings.u64Dir2.empty()) {
        // Two folders, one list: the second pass adds its finds behind those of the first.
        scanOne("Ultra 64: ", settings.u64Dir + "roms\\", listFileName(config::kU64Path));
        scanOne("Ultra 64: ", settings.u64Dir2 + "roms\\", listFileName(config::kU64Path));
    }
    if (!settings.vpDir.empty())
        scanOne("Visual Pinball: ", settings.vpDir + "tables\\", listFileName(config::kVpPath));
    if (!settings.s11Dir.empty())
        scanOne("S11 Emu: ", settings.s11Dir + "roms\\", listFileName(config::kS11Path));
    if (!settings.daphneDir.empty())
        scanOne("Daphne: ", settings.daphneDir, listFileName(config::kDaphnePath));
}

void RomScan::scanOne(const std::string& caption, const std::string& folder, const std::string& file)
{
    // A fault on one list does not keep the others from being scanned.
    core::passOver(m_ui.Main.failures(), [&] {
        m_ui.lblPath.setCaption(caption);
        m_ctx.run.scanDir = folder;
        listFile = file;
        repaint();
        makeListFiles();
    });
}

void RomScan::makeListFiles()
{
    config::RunState& run = m_ctx.run;
    const Table& gameList = m_ctx.catalogue.gameList;
    // NOTE: the test is by the folder's text, so a user path whose folder reads exactly like the second
    // Ultra 64 folder also keeps the finds of the list scanned before it.
    const bool secondU64Pass = run.scanDir == m_ctx.settings.u64Dir2 + "roms\\";
    ScanScope scope(*this);
    if (!secondU64Pass)
        DeleteList();
    run.gi = 1;
    if (!secondU64Pass)
        scanCount = 1;

    // The folder is listed once for the whole walk, and the ending chosen once.
    const FolderListing& listing = listingOf(onDisk(run.scanDir));
    const std::string ending = endingFor(listFile);
    while (!gameList.at(run.gi, 1).empty()) {
        ShowFileSystemType2(listing, ending);
        ++run.gi;
        // A master list filled to its last row has no empty row to end the walk: the walk runs off
        // the table and the list file is not written.
        if (run.gi > gameList.maxRows())
            return;
    }
    writeListFile();
}

void RomScan::ShowFileSystemType2(const FolderListing& folder, const std::string& ending)
{
    config::RunState& run = m_ctx.run;
    const Table& gameList = m_ctx.catalogue.gameList;
    run.fileFound = folder.contains(gameList.at(run.gi, 1) + ending);
    if (!run.fileFound)
        return;
    Table& scanList = m_ctx.catalogue.scanList;
    scanList.set(scanCount, 1, gameList.at(run.gi, 1));
    scanList.set(scanCount, 2, gameList.at(run.gi, 2));
    ++scanCount;
}

void RomScan::writeListFile()
{
    const std::string named = m_ctx.home + listFile;
    // The file that the reading of the lists finds, whatever the case of its letters.
    const std::string path = m_ctx.files.resolveFile(named).value_or(platform::toNativePath(named));
    // Without a master list to walk the scan can find nothing; it must not wipe a list it cannot
    // rebuild.
    if (m_ctx.catalogue.gameList.at(1, 1).empty() && holdsGames(path))
        return;
    const std::string error = m_ctx.files.write(path, listFileText(m_ctx.catalogue.scanList));
    m_ui.Main.failures().note(error);
    runtime::FormStack& forms = m_ui.Main.stack();
    forms.trace("file write " + forms.relative(path) + (error.empty() ? "" : " failed"));
}

RomScan::ScanScope::ScanScope(RomScan& scan)
    : m_scan(scan)
    , m_outer(!scan.m_scanning)
{
    if (m_outer) {
        m_scan.m_listings.clear(); // each scan sees the folders as they are now
        m_scan.m_scanning = true;
    }
}

RomScan::ScanScope::~ScanScope()
{
    if (m_outer) {
        m_scan.m_scanning = false;
        m_scan.m_listings.clear();
    }
}

std::string RomScan::onDisk(const std::string& folder) const
{
    const std::string native = platform::toNativePath(folder);
    if (!native.empty() && native.front() == '/')
        return native;
    return m_ctx.home + native;
}

const FolderListing& RomScan::listingOf(const std::string& folder)
{
    auto found = m_listings.find(folder);
    if (found == m_listings.end())
        found = m_listings.try_emplace(folder, m_ctx.files, folder).first;
    return found->second;
}

void RomScan::repaint()
{
    core::passOver(m_ui.Main.failures(), [&] { m_ui.Main.stack().paintIfChanged(); });
}

} // namespace ombrel::catalogue
