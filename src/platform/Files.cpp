// Files: the real file system, with names looked up again without regard to case when they are not
// found as written.
#include "platform/Files.h"

#include "core/AtomicFile.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

namespace ombrel::platform {

namespace fs = std::filesystem;

namespace {

bool existsOnDisk(const std::string& path)
{
    std::error_code error;
    return fs::exists(path.empty() ? std::string(".") : path, error);
}

// A file, links followed: a folder, a link to one and a link to nothing are not. Nor is a device or a
// pipe, which a reader would wait on for ever.
bool fileOnDisk(const std::string& path)
{
    std::error_code error;
    return !path.empty() && fs::is_regular_file(path, error);
}

std::string join(const std::string& folder, const std::string& name)
{
    if (folder.empty())
        return name;
    if (folder.back() == '/')
        return folder + name;
    return folder + '/' + name;
}

std::string lowered(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// A folder changed this recently may change again within the same tick of its modification time, which
// a listing taken now would not see; such a listing is not reused.
constexpr auto kSettledAfter = std::chrono::seconds(2);

// The names of a folder's entries; empty when it cannot be read. With onlyExisting, a link that leads
// nowhere is left out, as exists() would not find it either.
std::vector<std::string> entriesOf(const std::string& folder, bool onlyExisting = false)
{
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator it(
        folder.empty() ? std::string(".") : folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && it != fs::directory_iterator(); it.increment(error)) {
        std::error_code entryError;
        if (onlyExisting && it->is_symlink(entryError) && !it->exists(entryError))
            continue;
        names.push_back(it->path().filename().string());
    }
    return names;
}

} // namespace

std::vector<std::string> FolderNames::matching(const std::string& folder, const std::string& name)
{
    std::error_code error;
    const auto modified = fs::last_write_time(folder.empty() ? std::string(".") : folder, error);
    const std::string key = lowered(name);
    std::lock_guard lock(m_mutex);
    auto it = m_folders.find(folder);
    const int64_t ticks = static_cast<int64_t>(modified.time_since_epoch().count());
    if (it != m_folders.end() && !error && it->second.modified == ticks) {
        m_lru.splice(m_lru.begin(), m_lru, it->second.lru);
        auto found = it->second.byLowerName.find(key);
        return found == it->second.byLowerName.end() ? std::vector<std::string> {} : found->second;
    }
    if (it != m_folders.end()) {
        m_lru.erase(it->second.lru);
        m_folders.erase(it);
    }
    ++m_listings;
    Listing listing;
    for (auto& entry : entriesOf(folder))
        listing.byLowerName[lowered(entry)].push_back(std::move(entry));
    auto found = listing.byLowerName.find(key);
    std::vector<std::string> matches
        = found == listing.byLowerName.end() ? std::vector<std::string> {} : found->second;
    const bool settled = fs::file_time_type::clock::now() - modified > kSettledAfter;
    if (error || !settled)
        return matches;
    while (m_folders.size() >= kMaxFolders) {
        m_folders.erase(m_lru.back());
        m_lru.pop_back();
    }
    m_lru.push_front(folder);
    listing.modified = ticks;
    listing.lru = m_lru.begin();
    m_folders.emplace(folder, std::move(listing));
    return matches;
}

// The path of names[index..] below folder, each name taken as written when it is there, else in any
// case that is there.
std::optional<std::string> DiskFiles::resolveBelow(
    const std::string& folder, const std::vector<std::string>& names, size_t index, bool fileOnly)
{
    if (index == names.size()) {
        const bool found = fileOnly ? fileOnDisk(folder) : existsOnDisk(folder);
        return found ? std::optional<std::string>(folder) : std::nullopt;
    }
    const std::string& name = names[index];
    std::string asWritten = join(folder, name);
    // A name that is there as written is the one meant, even if a sibling differs only in case; for a
    // file, only if it is one: a folder of that name leaves the siblings to be tried.
    const bool last = index + 1 == names.size();
    if (name == "." || name == ".." || ((last && fileOnly) ? fileOnDisk(asWritten) : existsOnDisk(asWritten)))
        return resolveBelow(asWritten, names, index + 1, fileOnly);
    // Only a missing name costs a look at its folder's names. Entries that differ from it only in case
    // are tried in name order, so the answer does not depend on the order of the disk.
    std::vector<std::string> matches = m_names.matching(folder, name);
    std::sort(matches.begin(), matches.end());
    for (const auto& match : matches) {
        if (auto found = resolveBelow(join(folder, match), names, index + 1, fileOnly))
            return found;
    }
    return std::nullopt;
}

bool tooLongToExist(std::string_view path)
{
    // NOTE: the limits of Linux (NAME_MAX, PATH_MAX); a look-up by a longer name fails on any of its
    // file systems, as does a listing compared against it.
    constexpr size_t kMaxName = 255;
    constexpr size_t kMaxPath = 4095;
    size_t length = 0;
    size_t name = 0;
    for (size_t i = 0; i < path.size(); ++i) {
        const bool separator = path[i] == '/' || path[i] == '\\';
        if (separator && i > 0 && (path[i - 1] == '/' || path[i - 1] == '\\'))
            continue;
        name = separator ? 0 : name + 1;
        if (name > kMaxName || ++length > kMaxPath)
            return true;
    }
    return false;
}

std::string toNativePath(const std::string& path)
{
    std::string native = path;
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::optional<std::string> DiskFiles::resolve(const std::string& path) { return resolveAs(path, false); }

std::optional<std::string> DiskFiles::resolveFile(const std::string& path) { return resolveAs(path, true); }

std::optional<std::string> DiskFiles::resolveAs(const std::string& path, bool fileOnly)
{
    if (tooLongToExist(path))
        return std::nullopt;
    std::string native = toNativePath(path);
    if (native.empty())
        return std::nullopt;
    if (fileOnly ? fileOnDisk(native) : existsOnDisk(native))
        return native;
    // A name that ends in a separator names a folder, never a file.
    if (fileOnly && native.back() == '/')
        return std::nullopt;

    std::vector<std::string> names;
    for (size_t start = 0; start < native.size();) {
        size_t slash = native.find('/', start);
        size_t end = slash == std::string::npos ? native.size() : slash;
        if (end > start)
            names.push_back(native.substr(start, end - start));
        start = end + 1;
    }
    auto found = resolveBelow(native.front() == '/' ? "/" : "", names, 0, fileOnly);
    if (found && native.back() == '/' && (found->empty() || found->back() != '/'))
        *found += '/';
    return found;
}

std::vector<std::string> DiskFiles::list(const std::string& folder)
{
    auto found = resolve(folder);
    if (!found)
        return {};
    std::error_code error;
    if (!fs::is_directory(*found, error))
        return {};
    // Sorted, so that whatever is built from a listing does not depend on the file system's order.
    auto names = entriesOf(*found, true);
    std::sort(names.begin(), names.end());
    return names;
}

std::string DiskFiles::write(const std::string& path, std::string_view bytes)
{
    return core::writeFileAtomic(path, bytes);
}

std::optional<std::vector<std::string>> DiskFiles::listFiles(const std::string& folder)
{
    auto found = resolve(folder);
    std::error_code error;
    if (!found || !fs::is_directory(*found, error))
        return std::vector<std::string> {};
    // NOTE: permission is not skipped here: a folder that cannot be read must not pass for an empty
    // one, since its files may still be reachable by name.
    std::vector<std::string> names;
    fs::directory_iterator it(*found, error);
    for (; !error && it != fs::directory_iterator(); it.increment(error)) {
        std::error_code entryError;
        if (it->is_regular_file(entryError))
            names.push_back(it->path().filename().string());
    }
    if (error)
        return std::nullopt;
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace ombrel::platform
