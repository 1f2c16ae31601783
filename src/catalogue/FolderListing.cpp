// FolderListing: a folder's names, listed once and looked up by set, with the disk's own answer where a
// listing cannot give it.
#include "catalogue/FolderListing.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace ombrel::catalogue {

namespace {

std::string lowered(std::string text)
{
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

bool sameIgnoringCase(const std::string& a, const std::string& b)
{
    return a.size() == b.size() && lowered(a) == lowered(b);
}

std::string join(const std::string& folder, const std::string& name)
{
    if (folder.empty())
        return name;
    return folder.back() == '/' ? folder + name : folder + '/' + name;
}

// A name that is one entry of the folder, and so can be answered from its listing.
bool isPlainName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".."
        && name.find_first_of(std::string_view("/\\\0", 3)) == std::string::npos;
}

// Walks the folder's names from `prefix` on as the look-up does: a name that is there as written is
// the only one taken; otherwise every entry that differs from it only in case is tried, in name order.
void collectFolders(platform::Files& files, const std::vector<std::string>& names, size_t index,
    const std::string& prefix, std::vector<std::string>& out)
{
    if (index == names.size()) {
        out.push_back(prefix);
        return;
    }
    const std::string& name = names[index];
    const std::string asWritten = join(prefix, name);
    // Only a path that is there as written resolves to itself.
    if (files.resolve(asWritten) == asWritten) {
        collectFolders(files, names, index + 1, asWritten, out);
        return;
    }
    for (const std::string& entry : files.list(prefix.empty() ? "." : prefix)) {
        if (sameIgnoringCase(entry, name))
            collectFolders(files, names, index + 1, join(prefix, entry), out);
    }
}

} // namespace

std::optional<std::vector<std::string>> FolderListing::foldersOf(
    platform::Files& files, const std::string& folder)
{
    const std::string native = platform::toNativePath(folder);
    std::vector<std::string> names;
    for (size_t start = 0; start < native.size();) {
        size_t slash = native.find('/', start);
        size_t end = slash == std::string::npos ? native.size() : slash;
        if (end > start)
            names.push_back(native.substr(start, end - start));
        start = end + 1;
    }
    // A NUL byte ends the path where the system reads it, wherever it stands in the text.
    if (std::any_of(names.begin(), names.end(),
            [](const std::string& n) { return n == "." || n == ".." || n.find('\0') != std::string::npos; }))
        return std::nullopt;
    std::vector<std::string> folders;
    collectFolders(files, names, 0, !native.empty() && native.front() == '/' ? "/" : "", folders);
    return folders;
}

FolderListing::FolderListing(platform::Files& files, std::string folder)
    : m_files(files)
    , m_folder(std::move(folder))
{
    // A damaged folder value the disk can find nothing by is never asked about, neither for the
    // listing nor game by game.
    if (platform::tooLongToExist(m_folder)) {
        m_nothing = true;
        return;
    }
    // The folder and the name are joined as text: what stands behind the last separator belongs to
    // every name.
    const std::string native = platform::toNativePath(m_folder);
    const size_t slash = native.rfind('/');
    const size_t split = slash == std::string::npos ? 0 : slash + 1;
    m_lead = native.substr(split);
    auto folders = foldersOf(m_files, native.substr(0, split));
    if (!folders) {
        m_askTheDisk = true;
        return;
    }
    for (const std::string& found : *folders) {
        // A folder that cannot be read may still give its files to a look-up by name: only the disk
        // knows. One read without error that holds no file is empty, and costs nothing more.
        std::optional<std::vector<std::string>> entries = m_files.listFiles(found.empty() ? "." : found);
        if (!entries) {
            m_askTheDisk = true;
            return;
        }
        for (std::string& entry : *entries) {
            m_lower.insert(lowered(entry));
            m_exact.insert(std::move(entry));
        }
    }
}

bool FolderListing::contains(const std::string& name) const
{
    if (m_nothing)
        return false;
    const std::string entry = m_lead + name;
    if (m_askTheDisk || !isPlainName(entry))
        return m_files.fileExists(m_folder + name);
    return m_exact.count(entry) != 0 || m_lower.count(lowered(entry)) != 0;
}

} // namespace ombrel::catalogue
