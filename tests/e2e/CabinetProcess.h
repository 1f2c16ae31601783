// CabinetProcess: the real program run on an X display, watched through its trace and typed at with
// xdotool, as a player at the cabinet would.
#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace ombrel::test {

// Every wait of these tests gives up after this long: a run that hangs fails instead of blocking.
constexpr int kWaitMs = 20000;

class CabinetProcess
{
public:
    // Starts binary --home home --trace <home>/run.trace on the display, with env ("NAME=value")
    // added to the test's environment. The program and everything it starts share one process group.
    CabinetProcess(const std::string& binary, const std::string& home, const std::string& display,
        const std::vector<std::string>& env);
    // Ends the program and the games it left running, if they still run.
    ~CabinetProcess();
    CabinetProcess(const CabinetProcess&) = delete;
    CabinetProcess& operator=(const CabinetProcess&) = delete;

    bool started() const { return m_pid > 0; }

    // The trace's lines so far, each without its time.
    std::vector<std::string> effects() const;
    // Waits for an effect that starts with prefix, at or after index from; its index, or nullopt when
    // none came in time or the program ended first.
    std::optional<size_t> waitForEffect(const std::string& prefix, size_t from = 0, int timeoutMs = kWaitMs);
    // The exit code once the program has ended by itself, or nullopt.
    std::optional<int> waitForExit(int timeoutMs = kWaitMs);
    // What the program wrote to standard error.
    std::string errors() const;

    // Runs xdotool with args on the display; its standard output, or nullopt when it failed.
    std::optional<std::string> xdotool(const std::vector<std::string>& args) const;
    // Holds a key down until an effect that starts with prefix appears, then lets it go, so a key that
    // steps at the repeat rate makes at least one step. Holds it again and again while the browser
    // still refuses input. The effect's index, or nullopt.
    std::optional<size_t> holdKeyUntil(const std::string& key, const std::string& prefix, size_t from);

    // The trace as written, for a failure message.
    std::string traceText() const;

private:
    bool ended();

    std::string m_home;
    std::string m_display;
    pid_t m_pid = 0;
    std::optional<int> m_exitCode;
};

// Polls ready until it answers true (true) or timeoutMs have passed (false).
bool eventually(const std::function<bool()>& ready, int timeoutMs = kWaitMs);

// Whether a program of that name can be run from PATH.
bool onPath(const std::string& program);

} // namespace ombrel::test
