// CabinetProcess: starting, watching and ending the real program for end-to-end tests.
#include "CabinetProcess.h"

#include "TraceDiff.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

extern char** environ;

namespace ombrel::test {

namespace {

constexpr auto kPoll = std::chrono::milliseconds(20);
constexpr int kHoldMs = 400;
constexpr int kStopMs = 3000;

std::vector<char*> pointers(std::vector<std::string>& words)
{
    std::vector<char*> out;
    for (auto& word : words)
        out.push_back(word.data());
    out.push_back(nullptr);
    return out;
}

// The given entries, then the test's environment: the first of two entries of one name is the one read.
std::vector<std::string> environment(const std::vector<std::string>& over)
{
    std::vector<std::string> out(over);
    for (char** entry = environ; *entry != nullptr; ++entry)
        out.emplace_back(*entry);
    return out;
}

std::string fileText(const std::string& path)
{
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

bool eventually(const std::function<bool()>& ready, int timeoutMs)
{
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (!ready()) {
        if (std::chrono::steady_clock::now() >= until)
            return false;
        std::this_thread::sleep_for(kPoll);
    }
    return true;
}

bool onPath(const std::string& program)
{
    const char* path = std::getenv("PATH");
    std::stringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (!folder.empty() && ::access((folder + "/" + program).c_str(), X_OK) == 0)
            return true;
    return false;
}

CabinetProcess::CabinetProcess(const std::string& binary, const std::string& home, const std::string& display,
    const std::vector<std::string>& env)
    : m_home(home)
    , m_display(display)
{
    std::vector<std::string> over(env);
    over.insert(over.end(), { "DISPLAY=" + display, "SDL_VIDEODRIVER=x11", "SDL_AUDIODRIVER=dummy" });
    std::vector<std::string> envWords = environment(over);
    std::vector<std::string> argWords = { binary, "--home", home, "--trace", home + "/run.trace" };

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(
        &actions, 2, (home + "/run.stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    auto argv = pointers(argWords);
    auto envp = pointers(envWords);
    pid_t pid = 0;
    if (posix_spawn(&pid, binary.c_str(), &actions, &attributes, argv.data(), envp.data()) == 0)
        m_pid = pid;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
}

CabinetProcess::~CabinetProcess()
{
    if (m_pid <= 0)
        return;
    // The games the program started are in its group and go with it.
    ::kill(-m_pid, SIGTERM);
    if (!eventually([this] { return ended(); }, kStopMs)) {
        ::kill(-m_pid, SIGKILL);
        int status = 0;
        ::waitpid(m_pid, &status, 0);
    }
    ::kill(-m_pid, SIGKILL);
}

bool CabinetProcess::ended()
{
    if (m_exitCode)
        return true;
    int status = 0;
    if (::waitpid(m_pid, &status, WNOHANG) != m_pid)
        return false;
    m_exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return true;
}

std::vector<std::string> CabinetProcess::effects() const
{
    std::vector<std::string> out;
    for (const std::string& line : TraceDiff::readLines(m_home + "/run.trace")) {
        const size_t blank = line.find(' ');
        out.push_back(blank == std::string::npos ? line : line.substr(blank + 1));
    }
    return out;
}

std::optional<size_t> CabinetProcess::waitForEffect(const std::string& prefix, size_t from, int timeoutMs)
{
    auto look = [&]() -> std::optional<size_t> {
        const auto lines = effects();
        for (size_t i = from; i < lines.size(); ++i)
            if (lines[i].starts_with(prefix))
                return i;
        return std::nullopt;
    };
    std::optional<size_t> found;
    // A program that has ended writes nothing more: one last look, then give up.
    eventually([&] { return (found = look()) || ended(); }, timeoutMs);
    return found ? found : look();
}

std::optional<int> CabinetProcess::waitForExit(int timeoutMs)
{
    if (m_pid <= 0 || !eventually([this] { return ended(); }, timeoutMs))
        return std::nullopt;
    return m_exitCode;
}

std::string CabinetProcess::errors() const
{
    return fileText(m_home + "/run.stderr");
}

std::string CabinetProcess::traceText() const
{
    return fileText(m_home + "/run.trace");
}

std::optional<std::string> CabinetProcess::xdotool(const std::vector<std::string>& args) const
{
    std::string command = "DISPLAY=" + m_display + " xdotool";
    for (const std::string& arg : args)
        command += " '" + arg + "'"; // no argument of these tests holds a quote
    FILE* pipe = ::popen((command + " 2>/dev/null").c_str(), "r");
    if (!pipe)
        return std::nullopt;
    std::string out;
    char buffer[256];
    for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        out.append(buffer, n);
    const int status = ::pclose(pipe);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return std::nullopt;
    return out;
}

std::optional<size_t> CabinetProcess::holdKeyUntil(
    const std::string& key, const std::string& prefix, size_t from)
{
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(kWaitMs);
    while (std::chrono::steady_clock::now() < until && !ended()) {
        xdotool({ "keydown", key });
        const auto found = waitForEffect(prefix, from, kHoldMs);
        xdotool({ "keyup", key });
        if (found)
            return found;
    }
    return std::nullopt;
}

} // namespace ombrel::test
