// FieldFile: a text file opened as written, else as found in any case.
#include "platform/FieldFile.h"

namespace ombrel::platform {

std::optional<core::FieldReader> openFieldFile(Files& files, const std::string& path)
{
    if (auto file = core::FieldReader::open(path))
        return file;
    if (auto found = files.resolveFile(path))
        return core::FieldReader::open(*found);
    return std::nullopt;
}

std::optional<core::FieldReader> openFieldFile(const std::string& path)
{
    DiskFiles files;
    return openFieldFile(files, path);
}

} // namespace ombrel::platform
