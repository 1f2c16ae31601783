// FolderListing: the entries of one folder, listed once, so that a scan asks a set for each game
// instead of the disk.
#pragma once

#include "platform/Files.h"

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace ombrel::catalogue {

// Answers contains(name) exactly as files.fileExists(folder + name) would, names found without regard to
// case included, but from listings made once when it is built. The two are joined as text, as the
// cabinet's folder values are: "roms\4" and "pacman.zip" name roms/4pacman.zip. A folder whose own name has to be found
// without regard to case may stand for several folders on disk (ROMS/ and roms/): their listings are
// all taken. Where a listing could not tell the truth (a name that reaches into another folder, a
// folder that could not be read), the disk is asked, name by name.
class FolderListing
{
public:
    FolderListing(platform::Files& files, std::string folder);

    bool contains(const std::string& name) const;

    // The folders on disk that the folder's name leads to, in the order a look-up tries them; nullopt
    // when the name holds ".", ".." or a NUL byte and so cannot be followed without the disk.
    static std::optional<std::vector<std::string>> foldersOf(platform::Files& files, const std::string& folder);

private:
    platform::Files& m_files;
    std::string m_folder;
    std::string m_lead; // the folder's text behind its last separator, in front of every name
    bool m_askTheDisk = false;
    bool m_nothing = false; // a folder text no file can be found by
    std::unordered_set<std::string> m_exact;
    std::unordered_set<std::string> m_lower; // ASCII letters lowered, as the look-up compares them
};

} // namespace ombrel::catalogue
