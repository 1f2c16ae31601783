// LeftoverTemps: the start-up sweep of the temporary files that a kill in the middle of a write leaves
// beside the program's files.
#pragma once

#include <string>
#include <vector>

namespace ombrel::core {

struct LeftoverSweep
{
    std::vector<std::string> removed; // paths of the temporary files taken away
    std::vector<std::string> notRemoved; // temporary files that could not be taken away
    std::vector<std::string> problems; // one message for each thing that failed
};

// Removes, beside each of files (and beside the end of its chain of links), the temporary files that
// writeFileAtomic made for it in a process that no longer runs. A temporary file of another running
// copy of the program is left alone, and so is every other name. What cannot be looked at or removed
// is reported and passed by. Call it at start, before the program writes anything: a temporary file
// that carries this process's own id is then a left-over from an earlier run with the same id.
LeftoverSweep removeLeftoverTemps(const std::vector<std::string>& files);

} // namespace ombrel::core
