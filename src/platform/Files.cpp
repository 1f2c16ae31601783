// Files: the real file system, with names looked up again without regard to case when they are not
// found as written.
#include "platform/Files.h"

#include "core/AtomicFile.h"

#include <algorithm>
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

std::string join(const std::string& folder, const std::string& name)
{
    if (folder.empty())
        return name;
    if (folder.back() == '/')
        return folder + name;
    return folder + '/' + name;
}

bool sameIgnoringCase(const std::string& a, const std::string& b)
{
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return a.size() == b.size()
        && std::equal(a.begin(), a.end(), b.begin(), [&](char x, char y) { return lower(x) == lower(y); });
}

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

// The path of names[index..] below folder, each name taken as written when it is there, else in any
// case that is there.
std::optional<std::string> resolveBelow(
    const std::string& folder, const std::vector<std::string>& names, size_t index)
{
    if (index == names.size())
        return existsOnDisk(folder) ? std::optional<std::string>(folder) : std::nullopt;
    const std::string& name = names[index];
    std::string asWritten = join(folder, name);
    // A name that is there as written is the one meant, even if a sibling differs only in case.
    if (name == "." || name == ".." || existsOnDisk(asWritten))
        return resolveBelow(asWritten, names, index + 1);
    // Only a missing name costs a listing of its folder. Entries that differ from it only in case are
    // tried in name order, so the answer does not depend on the order of the disk.
    std::vector<std::string> matches;
    for (auto& entry : entriesOf(folder)) {
        if (sameIgnoringCase(entry, name))
            matches.push_back(std::move(entry));
    }
    std::sort(matches.begin(), matches.end());
    for (const auto& match : matches) {
        if (auto found = resolveBelow(join(folder, match), names, index + 1))
            return found;
    }
    return std::nullopt;
}

} // namespace

std::string toNativePath(const std::string& path)
{
    std::string native = path;
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::optional<std::string> DiskFiles::resolve(const std::string& path)
{
    std::string native = toNativePath(path);
    if (native.empty())
        return std::nullopt;
    if (existsOnDisk(native))
        return native;

    std::vector<std::string> names;
    for (size_t start = 0; start < native.size();) {
        size_t slash = native.find('/', start);
        size_t end = slash == std::string::npos ? native.size() : slash;
        if (end > start)
            names.push_back(native.substr(start, end - start));
        start = end + 1;
    }
    auto found = resolveBelow(native.front() == '/' ? "/" : "", names, 0);
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

} // namespace ombrel::platform
