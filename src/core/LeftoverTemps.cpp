// LeftoverTemps: finds the program's own temporary files whose writer is gone, and removes them.
#include "core/LeftoverTemps.h"

#include "core/AtomicFile.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <dirent.h>
#include <map>
#include <set>
#include <unistd.h>

namespace ombrel::core {

namespace {

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
        [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// The running program's short name, as the kernel keeps it; empty if it cannot be read.
std::string programName(const std::string& process)
{
    std::string name;
    if (!readFile("/proc/" + process + "/comm", name))
        return {};
    while (!name.empty() && name.back() == '\n')
        name.pop_back();
    return name;
}

// Whether the process that made a temporary file may still be writing it. A process id is reused once
// its process is gone, so a live process counts only if it runs the same program as this one.
bool writerMayRun(long pid)
{
    if (pid == ::getpid())
        return false; // nothing of this run writes yet
    if (::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH)
        return false;
    const std::string mine = programName("self");
    const std::string theirs = programName(std::to_string(pid));
    // NOTE: when either name cannot be read, the file is kept: a left-over stays one start longer
    // rather than a running writer losing its file.
    return mine.empty() || theirs.empty() || mine == theirs;
}

} // namespace

LeftoverSweep removeLeftoverTemps(const std::vector<std::string>& files)
{
    LeftoverSweep sweep;
    // Folder -> the names (in lower case) of the program's files in it. The letters' case is left open
    // since a file may have been found under another case than the one the program asks for.
    std::map<std::string, std::set<std::string>> wanted;
    const auto want = [&wanted](const std::string& file) {
        const size_t slash = file.find_last_of('/');
        const std::string folder = slash == std::string::npos ? "./" : file.substr(0, slash + 1);
        wanted[folder].insert(lowerCase(file.substr(slash == std::string::npos ? 0 : slash + 1)));
    };
    for (const std::string& file : files) {
        // Beside the file itself, and, for a link, beside the file it leads to (where writes go now;
        // versions that replaced the link wrote beside the link).
        want(file);
        const LinkEnd end = followLinks(file);
        if (!end.file.empty() && end.file != file)
            want(end.file);
    }

    for (const auto& [folder, names] : wanted) {
        DIR* dir = ::opendir(folder.c_str());
        if (!dir) {
            if (errno != ENOENT)
                sweep.problems.push_back(
                    "cannot look for left-over temporary files in " + folder + ": " + std::strerror(errno));
            continue;
        }
        std::vector<std::string> stale;
        while (const dirent* entry = ::readdir(dir)) {
            const auto temp = parseTemporaryName(entry->d_name);
            if (temp && names.count(lowerCase(temp->target)) && !writerMayRun(temp->pid))
                stale.push_back(folder + entry->d_name);
        }
        ::closedir(dir);
        std::sort(stale.begin(), stale.end());
        for (const std::string& path : stale) {
            if (::unlink(path.c_str()) == 0) {
                sweep.removed.push_back(path);
            } else if (errno != ENOENT) { // ENOENT: another starting copy took it first
                sweep.notRemoved.push_back(path);
                sweep.problems.push_back("cannot remove the left-over " + path + ": " + std::strerror(errno));
            }
        }
    }
    return sweep;
}

} // namespace ombrel::core
