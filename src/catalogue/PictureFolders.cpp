// PictureFolders: the base folder of each list's pictures.
#include "catalogue/PictureFolders.h"

namespace ombrel::catalogue {

const PictureKind* pictureKindOf(std::string_view listType)
{
    for (const PictureKind& kind : kPictureKinds) {
        if (kind.listType == listType)
            return &kind;
    }
    return nullptr;
}

std::optional<std::string> pictureBase(
    const config::Settings& settings, const Catalogue& catalogue, int path, int row, const std::string& rowText)
{
    if (path >= 1 && path <= config::kUserPaths)
        return settings.artDir[static_cast<size_t>(path)];
    switch (path) {
    case config::kImpactPath:
        return settings.impactDir;
    case config::kModelerPath:
        return settings.modelerDir;
    case config::kU64Path:
        // The first Ultra 64 folder serves the one game its emulator runs; the rest are in the second.
        return rowText == "Killer Instinct" ? settings.u64Dir : settings.u64Dir2;
    case config::kVpPath:
        return settings.vpDir;
    case config::kS11Path:
        return settings.s11Dir;
    case config::kDaphnePath:
        return settings.daphneDir;
    case config::kExtrasPath:
        return catalogue.extras.at(row, 3); // each program brings its own folder
    default:
        return std::nullopt;
    }
}

} // namespace ombrel::catalogue
