// Files: existence tests, folder listings and the program's file writes. A name not found as written
// is looked up again without regard to case, since cabinets move from Windows with mixed-case files.
// Folders may be written with '\' or '/'.
#pragma once

#include <cstdint>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ombrel::platform {

class Files {
public:
    virtual ~Files() = default;
    // The path as it exists on disk ('\' turned to '/', letters' case found), or nullopt. Anything
    // counts: a file or a folder.
    virtual std::optional<std::string> resolve(const std::string& path) = 0;
    bool exists(const std::string& path) { return resolve(path).has_value(); }
    // The same for a file only, as Windows' file-exists test has it: a folder in a file's place is not
    // that file (a ROM folder "galaga.zip/" is no ROM). A link to a file is a file; a link to a folder
    // is not, and a link that leads nowhere is nothing.
    virtual std::optional<std::string> resolveFile(const std::string& path) = 0;
    bool fileExists(const std::string& path) { return resolveFile(path).has_value(); }
    // Names (not paths) of the entries of a folder, as stored, in name order; empty if it is not a
    // folder. A link that leads nowhere is left out: exists() does not find it either.
    virtual std::vector<std::string> list(const std::string& folder) = 0;
    // Replaces the file at path as a whole with bytes: the one way the program writes its files
    // (ombrel.cfg, omkeys.cfg, the list files). Returns an empty string, or why it could not be written;
    // the old file is then untouched.
    virtual std::string write(const std::string& path, std::string_view bytes) = 0;
    // Names of the files of a folder (as fileExists() counts them), in name order. Empty when the
    // folder is not there or is no folder: nothing can be found below it. nullopt when it is there but
    // could not be read, where files may still be reached by name.
    virtual std::optional<std::vector<std::string>> listFiles(const std::string& folder) = 0;
};

// The names of folders listed to find a name without regard to case, each kept while its folder's
// modification time stays what it was, so an art folder of thousands of files is listed once, not once
// per missing picture. Only the most recently used folders are kept.
class FolderNames {
public:
    static constexpr size_t kMaxFolders = 64;
    // The entries of folder ("" for the current one) whose names equal name without regard to case, as
    // a fresh listing would give them, in no particular order.
    std::vector<std::string> matching(const std::string& folder, const std::string& name);
    // For tests: how many times a folder was read.
    int listings() const { return m_listings; }

private:
    struct Listing {
        int64_t modified = 0; // the folder's time in the file system's ticks
        std::unordered_map<std::string, std::vector<std::string>> byLowerName;
        std::list<std::string>::iterator lru;
    };
    std::mutex m_mutex;
    std::unordered_map<std::string, Listing> m_folders;
    std::list<std::string> m_lru; // most recent first
    int m_listings = 0;
};

// The real file system.
class DiskFiles final : public Files {
public:
    std::optional<std::string> resolve(const std::string& path) override;
    std::optional<std::string> resolveFile(const std::string& path) override;
    std::vector<std::string> list(const std::string& folder) override;
    std::string write(const std::string& path, std::string_view bytes) override;
    std::optional<std::vector<std::string>> listFiles(const std::string& folder) override;

    // For tests: the folders' names kept for look-ups in any case.
    const FolderNames& folderNames() const { return m_names; }

private:
    std::optional<std::string> resolveAs(const std::string& path, bool fileOnly);
    std::optional<std::string> resolveBelow(
        const std::string& folder, const std::vector<std::string>& names, size_t index, bool fileOnly);

    FolderNames m_names;
};

// '\' to '/': folder values of a Windows cabinet work unchanged.
std::string toNativePath(const std::string& path);

// Whether a path ('/' or '\\' between names) is too long for the system to find anything by it: a name longer
// than a folder entry can be, or the whole, runs of separators counted once, longer than a path can be.
// Costs one look at each byte, so a damaged 50 MB folder value is dismissed at once.
bool tooLongToExist(std::string_view path);

} // namespace ombrel::platform
