// ReplayFiles: the real disk of a replay run, whose writes the script can make fail.
#pragma once

#include "platform/Files.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ombrel::replay {

// Reads and writes go to the disk, except a write that the script has made fail: that one leaves the
// old file as it is and answers with a message, as a full disk or a read-only folder would.
class ReplayFiles final : public platform::Files {
public:
    // home: the program's folder with a trailing '/', to name files as the trace names them.
    explicit ReplayFiles(std::string home)
        : m_home(std::move(home))
    {
    }

    std::optional<std::string> resolve(const std::string& path) override { return m_disk.resolve(path); }
    std::optional<std::string> resolveFile(const std::string& path) override { return m_disk.resolveFile(path); }
    std::vector<std::string> list(const std::string& folder) override { return m_disk.list(folder); }
    std::optional<std::vector<std::string>> listFiles(const std::string& folder) override
    {
        return m_disk.listFiles(folder);
    }
    std::string write(const std::string& path, std::string_view bytes) override;

    // The next write of file (named as the trace names it: relative to the program's folder), or of
    // any file when file is empty, fails. Each call fails one write more.
    void failNextWrite(std::string file) { m_failing.push_back(std::move(file)); }

private:
    platform::DiskFiles m_disk;
    std::string m_home;
    std::vector<std::string> m_failing; // in the order the script asked
};

} // namespace ombrel::replay
