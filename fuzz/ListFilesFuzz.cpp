// Fuzz target of the readers of the game lists: any bytes as gamelist.lst and as a path's list file.
#include "FuzzHome.h"

#include "catalogue/Catalogue.h"
#include "catalogue/ListFiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

using namespace ombrel;
using fuzz::fuzzCheck;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // One private folder for the whole run, emptied for each input (a folder per input would cost
    // more than the reading).
    static const fuzz::FuzzHome home;
    home.clear();
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    home.write(catalogue::kGameListFile, bytes);
    home.write(catalogue::listFileName(1), bytes);

    config::Settings settings;
    settings.romDir[1] = "roms\\"; // list 1 on, list 2 off
    config::RunState run;
    catalogue::Catalogue lists;
    platform::DiskFiles files;
    const catalogue::CatalogueContext ctx { settings, run, lists, files, home.path() };

    fuzzCheck(catalogue::readGameList(ctx), "the master list was not read");
    fuzzCheck(run.gi >= 1 && run.gi <= catalogue::kMaxMasterRows + 1, "the master list ran past its rows");
    run.curPath = 1;
    catalogue::makeArrays(ctx, catalogue::listFileName(1));
    fuzzCheck(run.gi >= 1 && run.gi <= catalogue::kMaxGamesPerList + 1, "a list ran past its rows");
    // A list that is off reads nothing, but its missing file is made, empty, as a first run does.
    run.curPath = 2;
    catalogue::makeArrays(ctx, catalogue::listFileName(2));

    const catalogue::Table& master = lists.gameList;
    const catalogue::Table& list = *lists.list(1);
    fuzzCheck(lists.list(2)->length() == 0, "a list that is off holds games");
    // Both files hold the same bytes and are read by the same rule; only their sizes differ.
    const int rows = std::min(list.maxRows(), master.maxRows());
    fuzzCheck(std::min(list.length(), rows) == std::min(master.length(), rows), "the lists differ in length");
    for (int row = 1; row <= rows && !list.at(row, 1).empty(); ++row)
        fuzzCheck(list.at(row, 1) == master.at(row, 1) && list.at(row, 2) == master.at(row, 2),
            "the same line read differently into the two lists");

    std::vector<std::string> expected { catalogue::kGameListFile, catalogue::listFileName(1),
        catalogue::listFileName(2) };
    std::sort(expected.begin(), expected.end());
    fuzzCheck(home.names() == expected, "reading the lists wrote other files than the missing list");
    return 0;
}
