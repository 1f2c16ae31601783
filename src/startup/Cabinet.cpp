// Cabinet: the shared state's helpers.
#include "startup/Cabinet.h"

#include "platform/Files.h"

namespace ombrel::startup {

std::string Cabinet::homeFile(const std::string& name) const
{
    std::string relative = platform::toNativePath(name);
    while (!relative.empty() && relative.front() == '/')
        relative.erase(relative.begin());
    return home + relative;
}

} // namespace ombrel::startup
