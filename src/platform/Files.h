// Files: existence tests, folder listings and the program's file writes. A name not found as written
// is looked up again without regard to case, since cabinets move from Windows with mixed-case files.
// Folders may be written with '\' or '/'.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::platform {

class Files {
public:
    virtual ~Files() = default;
    // The path as it exists on disk ('\' turned to '/', letters' case found), or nullopt.
    virtual std::optional<std::string> resolve(const std::string& path) = 0;
    bool exists(const std::string& path) { return resolve(path).has_value(); }
    // Names (not paths) of the entries of a folder, as stored, in name order; empty if it is not a
    // folder. A link that leads nowhere is left out: exists() does not find it either.
    virtual std::vector<std::string> list(const std::string& folder) = 0;
    // Replaces the file at path as a whole with bytes: the one way the program writes its files
    // (ombrel.cfg, omkeys.cfg, the list files). Returns an empty string, or why it could not be written;
    // the old file is then untouched.
    virtual std::string write(const std::string& path, std::string_view bytes) = 0;
};

// The real file system.
class DiskFiles final : public Files {
public:
    std::optional<std::string> resolve(const std::string& path) override;
    std::vector<std::string> list(const std::string& folder) override;
    std::string write(const std::string& path, std::string_view bytes) override;
};

// '\' to '/': folder values of a Windows cabinet work unchanged.
std::string toNativePath(const std::string& path);

} // namespace ombrel::platform
