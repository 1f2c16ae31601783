// ListFiles: reading the master list, the lists of the paths and the Extras records.
#include "catalogue/ListFiles.h"

#include "core/FieldReader.h"

#include <array>
#include <fstream>
#include <optional>

namespace ombrel::catalogue {

namespace {

// Where the value of each Extras field starts: behind labels of the length of "Exe=", "Display=",
// "Path=" and "Options=". The labels themselves are never looked at.
constexpr std::array<int, 4> kExtrasColumns { 5, 9, 6, 9 };

std::optional<core::FieldReader> openInHome(const CatalogueContext& ctx, const std::string& name)
{
    auto found = ctx.files.resolveFile(ctx.home + name);
    if (!found)
        return std::nullopt;
    return core::FieldReader::open(*found);
}

// Why reading the file `name` stopped short, for the failure log.
std::string readFailure(const std::string& name, const core::ReadError& error)
{
    return name + " line " + std::to_string(error.line()) + ": " + error.what();
}

// Pairs of fields (ROM name, description) into rows gi upward, until the file ends or the table is
// full. A read error (a last line with one field) ends the reading; what was stored stays, and the
// error is returned.
std::string readPairs(core::FieldReader& reader, Table& table, int& gi, const std::string& name)
{
    try {
        while (!reader.atEnd() && gi <= table.maxRows()) {
            table.set(gi, 1, reader.readField());
            table.set(gi, 2, reader.readField());
            ++gi;
        }
    } catch (const core::ReadError& error) {
        return readFailure(name, error);
    }
    return {};
}

} // namespace

std::string listFileName(int path)
{
    if (path >= 1 && path <= config::kUserPaths)
        return "l " + std::to_string(path) + ".lst";
    if (path >= config::kImpactPath && path <= config::kDaphnePath)
        return std::string("l").append(std::to_string(path)).append(".lst");
    if (path == config::kExtrasPath)
        return kExtrasFile;
    return {};
}

bool isPathActive(const config::Settings& settings, int path)
{
    if (path >= 1 && path <= config::kUserPaths)
        return !settings.romDir[static_cast<size_t>(path)].empty();
    switch (path) {
    case config::kImpactPath:
        return !settings.impactDir.empty();
    case config::kModelerPath:
        return !settings.modelerDir.empty();
    case config::kU64Path:
        return !settings.u64Dir.empty() || !settings.u64Dir2.empty();
    case config::kVpPath:
        return !settings.vpDir.empty();
    case config::kS11Path:
        return !settings.s11Dir.empty();
    case config::kDaphnePath:
        return !settings.daphneDir.empty();
    default:
        return false;
    }
}

bool readGameList(const CatalogueContext& ctx)
{
    auto reader = openInHome(ctx, kGameListFile);
    if (!reader)
        return false;
    ctx.run.gi = 1;
    readPairs(*reader, ctx.catalogue.gameList, ctx.run.gi, kGameListFile);
    return true;
}

std::string makeArrays(const CatalogueContext& ctx, const std::string& dirdb)
{
    std::string path = ctx.home + dirdb;
    auto found = ctx.files.resolveFile(path);
    if (!found) {
        // Opened for appending, so a file that appeared in the meantime is never cut short.
        std::ofstream create(platform::toNativePath(path), std::ios::binary | std::ios::app);
        return create ? std::string() : dirdb + ": cannot be created";
    }
    auto reader = core::FieldReader::open(*found);
    if (!reader)
        return dirdb + ": cannot be read"; // there, but not a file that can be read: nothing to take from it

    ctx.run.gi = 1;
    int list = ctx.run.curPath;
    if (list >= 1 && list <= config::kDaphnePath) {
        if (isPathActive(ctx.settings, list))
            return readPairs(*reader, *ctx.catalogue.list(list), ctx.run.gi, dirdb);
    } else if (list == config::kExtrasPath) {
        ctx.run.extraPath = ctx.home + kExtrasFile;
        CheckForExtras(ctx, ctx.run.extraPath);
        if (ctx.run.fileFound)
            return InputExtras(ctx);
    }
    return {};
}

std::string InputExtras(const CatalogueContext& ctx)
{
    int& gi = ctx.run.gi;
    gi = 1;
    auto reader = openInHome(ctx, kExtrasFile);
    if (!reader)
        return std::string(kExtrasFile) + ": cannot be read";
    Table& extras = ctx.catalogue.extras;
    try {
        while (!reader->atEnd() && gi <= extras.maxRows()) {
            // Anything between records is passed over, so it may serve as a comment.
            if (core::trimmed(reader->readField()) != "{")
                continue;
            std::array<std::string, 5> fields; // the fifth is the closing line, never looked at
            for (auto& field : fields)
                field = reader->readField();
            // Only a whole record is stored: one cut short by the end of the file leaves no row.
            for (size_t i = 0; i < kExtrasColumns.size(); ++i)
                extras.set(
                    gi, static_cast<int>(i) + 1, core::trimmed(core::valueAt(fields[i], kExtrasColumns[i])));
            ++gi;
        }
    } catch (const core::ReadError& error) {
        return readFailure(kExtrasFile, error);
    }
    return {};
}

void CheckForExtras(const CatalogueContext& ctx, const std::string& path)
{
    ctx.run.fileFound = ctx.files.fileExists(path);
}

} // namespace ombrel::catalogue
