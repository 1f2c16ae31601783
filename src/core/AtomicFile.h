// AtomicFile: replace a file as a whole (temporary file in the same folder, flush, rename), so a power
// cut leaves either the old file or the new one, never half of one.
#pragma once

#include <string>
#include <string_view>

namespace ombrel::core {

// Writes bytes to path atomically. Returns an empty string on success, else a message that names the
// file and the reason. The old file is untouched on failure, and no temporary file is left behind.
std::string writeFileAtomic(const std::string& path, std::string_view bytes);

// Reads a whole file as bytes; false if it cannot be opened.
bool readFile(const std::string& path, std::string& bytes);

} // namespace ombrel::core
