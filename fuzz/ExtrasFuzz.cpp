// Fuzz target of the reader of extra.lst, the owner's menu of programs: any bytes as that file.
#include "FuzzHome.h"

#include "catalogue/Catalogue.h"
#include "catalogue/ListFiles.h"
#include "core/FieldReader.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

using namespace ombrel;
using fuzz::fuzzCheck;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // One private folder for the whole run: the file is replaced for each input.
    static const fuzz::FuzzHome home;
    home.write(catalogue::kExtrasFile, std::string_view(reinterpret_cast<const char*>(data), size));
    const std::vector<std::string> before = home.names();

    config::Settings settings;
    config::RunState run;
    catalogue::Catalogue lists;
    platform::DiskFiles files;
    const catalogue::CatalogueContext ctx { settings, run, lists, files, home.path() };

    // As the boot reads it: list 27, by a name whose case differs from the file's.
    run.curPath = config::kExtrasPath;
    catalogue::makeArrays(ctx, "Extra.lst");
    fuzzCheck(run.fileFound, "extra.lst was not found");
    fuzzCheck(run.gi >= 1 && run.gi <= catalogue::kMaxGamesPerList + 1, "the records ran past their rows");

    const catalogue::Table& extras = lists.extras;
    for (int row = 1; row < run.gi; ++row) {
        for (int column = 1; column <= 4; ++column) {
            const std::string& value = extras.at(row, column);
            fuzzCheck(core::trimmed(value) == value, "a value of a record kept its blanks");
        }
    }
    fuzzCheck(home.names() == before, "reading extra.lst changed the program's folder");
    return 0;
}
