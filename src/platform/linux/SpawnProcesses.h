// SpawnProcesses: emulators started with posix_spawn, waited for with waitpid; files opened with xdg-open.
#pragma once

#include "platform/Files.h"
#include "platform/Processes.h"
#include "runtime/Trace.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace ombrel::platform::linux {

// A command line is split into words with no expansion of any kind, its program found as
// launch/CommandLine.h says (program's folder, then PATH, "x.exe" tried as "x"), and started in its
// working folder with the signals reset to their defaults. The id of a process is its pid.
//
// A program that cannot be started writes "ombrel: cannot start <command line>: <reason>" to standard
// error and gives 0, which the caller takes as a game that ended at once.
//
// Trace lines, the same as the recording stand-in writes: "launch <command line> | in <folder>" (with
// " failed" when nothing started), "shell <verb> <file> | in <folder>", "process exit <id>".
//
// A process nobody waits for (a timed launch, the opener) is collected at the next start, so it does
// not linger as a zombie. Games still running when the program ends keep running.
class SpawnProcesses final : public Processes
{
public:
    // home: the program's folder, with a trailing '/'. opener: the program that opens a file with the
    // desktop's choice of application.
    SpawnProcesses(runtime::Trace& trace, std::string home, std::string opener = "xdg-open");

    int start(const std::string& commandLine, const std::string& workDir) override;
    void waitForExit(int id) override;
    bool running(int id) override;
    // Every verb opens the file: the desktop knows one action per kind of file.
    bool shellExecute(const std::string& verb, const std::string& file, const std::string& dir) override;

    // Runs each time a wait for a started game has returned, before the caller goes on. The owner of
    // the window drops there what the window's queue gathered while the game had the keyboard, which
    // this class cannot see.
    std::function<void()> afterWait;

private:
    // The pid, or 0 with the reason given in error.
    int spawn(const std::vector<std::string>& argv, const std::string& folder, std::string& error);
    std::optional<std::string> findProgram(const std::string& path);
    std::string folderOnDisk(const std::string& dir);
    void collectEnded();
    void forget(int id);

    runtime::Trace& m_trace;
    std::string m_home;
    std::string m_opener;
    DiskFiles m_files;
    std::vector<int> m_children; // started and not yet collected
};

} // namespace ombrel::platform::linux
