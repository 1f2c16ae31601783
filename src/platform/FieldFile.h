// FieldFile: opens one of the cabinet's text files for the field reader, found whatever the case of its
// letters, since a file brought from a Windows cabinet may be spelt "Ombrel.INI" or "OMKEYS.CFG".
#pragma once

#include "core/FieldReader.h"
#include "platform/Files.h"

#include <optional>
#include <string>

namespace ombrel::platform {

// nullopt when the file is missing or cannot be read.
std::optional<core::FieldReader> openFieldFile(Files& files, const std::string& path);
// The same on the real disk.
std::optional<core::FieldReader> openFieldFile(const std::string& path);

} // namespace ombrel::platform
