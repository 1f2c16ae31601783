// Processes: starting an emulator and waiting for it, and the desktop's opener for a file.
#pragma once

#include <string>

namespace ombrel::platform {

class Processes {
public:
    virtual ~Processes() = default;
    // Starts the command line (kept whole for the trace) in workDir. Returns an id above 0, or 0 when
    // it could not be started (the reason goes to standard error, never to the player).
    virtual int start(const std::string& commandLine, const std::string& workDir) = 0;
    // Blocks the calling thread until the process ends. Input that arrives meanwhile is dropped.
    virtual void waitForExit(int id) = 0;
    // True while the process runs.
    virtual bool running(int id) = 0;
    // Opens a file with the desktop's opener for the verb ("Play", "open") in the folder dir.
    virtual bool shellExecute(const std::string& verb, const std::string& file, const std::string& dir) = 0;
};

} // namespace ombrel::platform
