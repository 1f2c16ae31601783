// FakeProcesses: starts nothing; records launches and shell verbs, and lets the one who drives the run
// (a test, the replay script) decide when a game ends.
#pragma once

#include "platform/Processes.h"
#include "runtime/Trace.h"

#include <functional>
#include <string>
#include <vector>

namespace ombrel::platform::fake {

// Trace lines: "launch <command line> | in <folder>" (with " failed" when starting is set to fail, and
// for the one start after failNextStart()),
// "shell <verb> <file> | in <folder>", "process exit <id>".
class FakeProcesses final : public Processes {
public:
    explicit FakeProcesses(runtime::Trace& trace, std::string home = {});

    int start(const std::string& commandLine, const std::string& workDir) override;
    void waitForExit(int id) override;
    bool running(int id) override;
    bool shellExecute(const std::string& verb, const std::string& file, const std::string& dir) override;

    // Called while the program waits for process id. It returns when the process has ended (true) or
    // when the run ended first (false). Without it a waited-for process ends at once.
    std::function<bool(int id)> onWait;

    // The game started last ends without anyone waiting for it (a timed launch). Returns its id, or 0
    // when none runs.
    int exitLatest();

    void setStartSucceeds(bool ok) { m_startSucceeds = ok; }
    // The next start fails, as a program that cannot be started does; the ones after it do not.
    void failNextStart() { m_failNextStart = true; }
    void setShellSucceeds(bool ok) { m_shellSucceeds = ok; }

private:
    void exited(int id);

    runtime::Trace& m_trace;
    std::string m_home;
    std::vector<int> m_running; // in order of start
    int m_nextId = 1;
    bool m_startSucceeds = true;
    bool m_failNextStart = false;
    bool m_shellSucceeds = true;
};

} // namespace ombrel::platform::fake
