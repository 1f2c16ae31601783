// FakeProcesses: launches as trace lines, ended by the test or the script.
#include "platform/fake/FakeProcesses.h"

#include "platform/fake/HomeRelative.h"

#include <algorithm>
#include <utility>

namespace ombrel::platform::fake {

FakeProcesses::FakeProcesses(runtime::Trace& trace, std::string home)
    : m_trace(trace)
    , m_home(std::move(home))
{
}

int FakeProcesses::start(const std::string& commandLine, const std::string& workDir)
{
    std::string line = "launch " + homeRelative(commandLine, m_home) + " | in " + homeRelative(workDir, m_home);
    if (!m_startSucceeds || std::exchange(m_failNextStart, false)) {
        m_trace.effect(line + " failed");
        return 0;
    }
    m_trace.effect(line);
    const int id = m_nextId++;
    m_running.push_back(id);
    return id;
}

bool FakeProcesses::running(int id) { return std::find(m_running.begin(), m_running.end(), id) != m_running.end(); }

void FakeProcesses::waitForExit(int id)
{
    if (!running(id))
        return; // nothing was started: the wait returns at once
    if (onWait && !onWait(id))
        return;
    exited(id);
}

int FakeProcesses::exitLatest()
{
    if (m_running.empty())
        return 0;
    const int id = m_running.back();
    exited(id);
    return id;
}

void FakeProcesses::exited(int id)
{
    std::erase(m_running, id);
    m_trace.effect("process exit " + std::to_string(id));
}

bool FakeProcesses::shellExecute(const std::string& verb, const std::string& file, const std::string& dir)
{
    m_trace.effect("shell " + verb + " " + homeRelative(file, m_home) + " | in " + homeRelative(dir, m_home));
    return m_shellSucceeds;
}

} // namespace ombrel::platform::fake
