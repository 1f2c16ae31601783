// ReplayFiles: disk writes with scripted failures.
#include "replay/ReplayFiles.h"

#include "platform/fake/HomeRelative.h"

#include <algorithm>

namespace ombrel::replay {

std::string ReplayFiles::write(const std::string& path, std::string_view bytes)
{
    const std::string name = platform::fake::homeRelative(path, m_home);
    const auto failing = std::find_if(m_failing.begin(), m_failing.end(),
        [&](const std::string& file) { return file.empty() || file == name; });
    if (failing == m_failing.end())
        return m_disk.write(path, bytes);
    m_failing.erase(failing);
    return path + ": cannot be written (the replay script makes this write fail)";
}

} // namespace ombrel::replay
