// RomScanBench: the ROM scan of a full cabinet (a 4999-game master list, 27 folders of 4000 files), as
// the front end does it (one listing per folder), against the same scan with one look-up on disk per
// game and folder; and the scan of a cabinet whose 20 ROM folders are all empty.
#include "catalogue/Navigation.h"
#include "catalogue/RomScan.h"
#include "config/Settings.h"
#include "core/AtomicFile.h"
#include "core/FailureLog.h"
#include "platform/Files.h"
#include "platform/fake/FakeFonts.h"
#include "platform/fake/FakeImages.h"
#include "platform/fake/FakeRenderer.h"
#include "runtime/Clock.h"
#include "runtime/EventLoop.h"
#include "runtime/FormStack.h"
#include "runtime/Trace.h"

#include <benchmark/benchmark.h>

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

using namespace ombrel;
namespace fs = std::filesystem;

namespace {

constexpr int kGames = 4999;
constexpr int kFilesPerFolder = 4000;

// One folder the scan looks in: where it lies, the list file it fills, the ending of its games' files.
struct ScanFolder
{
    std::string folder;
    std::string listFile;
    std::string ending;
};

// A cabinet in a temporary folder, made once for the whole run: every list switched on, each folder
// holding four of every five games of the master list (one in ten in capitals, as a cabinet moved
// from Windows has them) and files of games the master list does not know.
class BenchCabinet
{
public:
    BenchCabinet()
        : m_root(fs::temp_directory_path() / ("ombrel-bench-scan-" + std::to_string(::getpid())))
    {
        fs::remove_all(m_root);
        fs::create_directories(m_root);
        home = m_root.string() + "/";

        std::string master;
        for (int i = 1; i <= kGames; ++i) {
            char line[64];
            std::snprintf(line, sizeof line, "\"g%04d\",\"Game %d\"\r\n", i, i);
            master += line;
        }
        write("gamelist.lst", master);

        for (int n = 1; n <= config::kUserPaths; ++n)
            settings.romDir[static_cast<size_t>(n)] = home + "path" + std::to_string(n) + "/";
        settings.impactDir = home + "impact/";
        settings.modelerDir = home + "modeler/";
        settings.u64Dir = home + "u64/";
        settings.u64Dir2 = home + "u64b/";
        settings.vpDir = home + "vp/";
        settings.s11Dir = home + "s11/";
        settings.daphneDir = home + "daphne/";

        for (int n = 1; n <= config::kUserPaths; ++n)
            folders.push_back({ settings.romDir[static_cast<size_t>(n)], catalogue::listFileName(n), ".zip" });
        folders.push_back({ settings.impactDir + "roms/", "l21.lst", ".zip" });
        folders.push_back({ settings.modelerDir + "roms/", "l22.lst", ".zip" });
        folders.push_back({ settings.u64Dir + "roms/", "l23.lst", ".img" });
        folders.push_back({ settings.u64Dir2 + "roms/", "l23.lst", ".img" });
        folders.push_back({ settings.vpDir + "tables/", "l24.lst", ".vpt" });
        folders.push_back({ settings.s11Dir + "roms/", "l25.lst", ".zip" });
        folders.push_back({ settings.daphneDir, "l26.lst", ".txt" });

        for (int n = 1; n <= config::kUserPaths; ++n) {
            emptySettings.romDir[static_cast<size_t>(n)] = home + "empty" + std::to_string(n) + "/";
            fs::create_directories(emptySettings.romDir[static_cast<size_t>(n)]);
        }

        for (size_t k = 0; k < folders.size(); ++k) {
            fs::create_directories(folders[k].folder);
            int made = 0;
            for (int i = 1; i <= kGames && made < kFilesPerFolder; ++i) {
                if ((i + static_cast<int>(k)) % 5 == 0)
                    continue;
                std::string name = rom(i) + folders[k].ending;
                if (i % 10 == 0)
                    for (char& c : name)
                        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
                touch(folders[k].folder + name);
                ++made;
            }
            for (int j = 0; made < kFilesPerFolder; ++j, ++made)
                touch(folders[k].folder + "unknown" + std::to_string(j) + folders[k].ending);
        }
    }
    ~BenchCabinet()
    {
        std::error_code error;
        fs::remove_all(m_root, error);
    }

    void write(const std::string& name, const std::string& text) const
    {
        std::ofstream(home + name, std::ios::binary) << text;
    }
    std::string read(const std::string& name) const
    {
        std::string bytes;
        core::readFile(home + name, bytes);
        return bytes;
    }

    std::string home;
    config::Settings settings;
    config::Settings emptySettings; // 20 user paths, each an empty folder
    std::vector<ScanFolder> folders;

private:
    // NOTE: names are built by snprintf: GCC 12 warns falsely (-Wrestrict) about a literal + std::string
    // inlined into this constructor at -O3.
    static std::string rom(int i)
    {
        char text[16];
        std::snprintf(text, sizeof text, "g%04d", i);
        return text;
    }
    static void touch(const std::string& path) { std::ofstream(path, std::ios::binary); }

    fs::path m_root;
};

BenchCabinet& cabinet()
{
    static BenchCabinet made;
    return made;
}

// The browser form's few controls that the scan writes to, on a runtime that paints nowhere.
struct ScanHarness
{
    explicit ScanHarness(BenchCabinet& cab)
        : ScanHarness(cab, cab.settings)
    {
    }
    ScanHarness(BenchCabinet& cab, const config::Settings& settings)
        : forms(runtime::FormServices { loop, trace, fonts, images, files, renderer, cab.home, failures })
    {
        forms.define("Main", [](runtime::FormStack& s) { return std::make_unique<runtime::Form>(s, "Main"); });
        runtime::Form& main = forms.form("Main");
        main.show();
        auto& list1 = main.add<runtime::ListBox>("List1");
        auto& lblPath = main.add<runtime::Label>("lblPath");
        auto& xlogo = main.add<runtime::Image>("xlogo");
        ll.emplace(main, "ll");
        lblNav.emplace(main, "lblNav");
        for (int k = 0; k < 9; ++k)
            ll->create(k);
        run.midRow = 4;
        catalogue::CatalogueContext ctx { settings, run, catalogue, files, cab.home };
        catalogue::readGameList(ctx);
        nav.emplace(ctx, catalogue::NavigationControls { main, list1, lblPath, xlogo, *ll, *lblNav, {}, {} });
        scan.emplace(ctx, *nav, catalogue::ScanControls { main, list1, lblPath, *ll });
    }

    runtime::VirtualClock clock;
    runtime::EventLoop loop { clock };
    runtime::NullTrace trace;
    platform::fake::FakeFonts fonts;
    platform::fake::FakeImages images;
    platform::DiskFiles files;
    platform::fake::FakeRenderer renderer;
    core::FailureLog failures { "", std::cerr };
    runtime::FormStack forms;
    config::RunState run;
    catalogue::Catalogue catalogue;
    std::optional<runtime::ControlArray<runtime::Label>> ll;
    std::optional<runtime::ControlArray<runtime::Label>> lblNav;
    std::optional<catalogue::Navigator> nav;
    std::optional<catalogue::RomScan> scan;
};

// The scan as it was first written: for every folder, every game of the master list asked of the disk
// on its own; the same finds, the same list files.
void naiveScan(BenchCabinet& cab, platform::Files& files, const catalogue::Table& gameList,
    catalogue::Table& scanList)
{
    int scanCount = 1;
    std::string previousList;
    for (const ScanFolder& folder : cab.folders) {
        // The second Ultra 64 folder adds to the first one's finds.
        if (folder.listFile != previousList) {
            scanList.clear();
            scanCount = 1;
        }
        previousList = folder.listFile;
        for (int gi = 1; !gameList.at(gi, 1).empty(); ++gi) {
            if (files.exists(folder.folder + gameList.at(gi, 1) + folder.ending)) {
                scanList.set(scanCount, 1, gameList.at(gi, 1));
                scanList.set(scanCount, 2, gameList.at(gi, 2));
                ++scanCount;
            }
        }
        core::writeFileAtomic(cab.home + folder.listFile, catalogue::listFileText(scanList));
    }
}

std::vector<std::string> listFiles(const BenchCabinet& cab)
{
    std::vector<std::string> texts;
    for (const ScanFolder& folder : cab.folders)
        texts.push_back(cab.read(folder.listFile));
    return texts;
}

void BM_ScanWithFolderListings(benchmark::State& state)
{
    ScanHarness harness(cabinet());
    for (auto _ : state)
        harness.scan->CheckForFiles();
}

void BM_ScanWithOneLookUpPerGame(benchmark::State& state)
{
    BenchCabinet& cab = cabinet();
    ScanHarness harness(cab);
    harness.scan->CheckForFiles();
    const auto listed = listFiles(cab);
    catalogue::Table scanList(catalogue::kMaxMasterRows, 2);
    for (auto _ : state)
        naiveScan(cab, harness.files, harness.catalogue.gameList, scanList);
    // Both ways must write the same lists, or the comparison means nothing.
    if (listed != listFiles(cab) || listed.front().empty())
        state.SkipWithError("the two scans wrote different lists");
}

void BM_ScanOfEmptyFolders(benchmark::State& state)
{
    BenchCabinet& cab = cabinet();
    ScanHarness harness(cab, cab.emptySettings);
    for (auto _ : state)
        harness.scan->CheckForFiles();
    if (!cab.read(catalogue::listFileName(1)).empty())
        state.SkipWithError("an empty folder gave games");
}

BENCHMARK(BM_ScanWithFolderListings)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScanOfEmptyFolders)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScanWithOneLookUpPerGame)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
