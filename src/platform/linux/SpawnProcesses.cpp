// SpawnProcesses: command lines resolved to a program and started with posix_spawn in their folder.
#include "platform/linux/SpawnProcesses.h"

#include "launch/CommandLine.h"
#include "platform/fake/HomeRelative.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

extern char** environ;

namespace ombrel::platform::linux {

namespace fs = std::filesystem;

namespace {

struct FileActionsDeleter
{
    void operator()(posix_spawn_file_actions_t* actions) const { posix_spawn_file_actions_destroy(actions); }
};
struct AttributesDeleter
{
    void operator()(posix_spawnattr_t* attributes) const { posix_spawnattr_destroy(attributes); }
};

std::string pathEnv()
{
    const char* path = std::getenv("PATH");
    return path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin:/usr/games";
}

std::string absolute(const std::string& path)
{
    std::error_code error;
    const fs::path full = fs::absolute(path, error);
    return error ? path : full.string();
}

void report(const std::string& what, const std::string& reason)
{
    std::fprintf(stderr, "ombrel: cannot %s: %s\n", what.c_str(), reason.c_str());
}

} // namespace

SpawnProcesses::SpawnProcesses(runtime::Trace& trace, std::string home, std::string opener)
    : m_trace(trace)
    , m_home(std::move(home))
    , m_opener(std::move(opener))
{
}

std::optional<std::string> SpawnProcesses::findProgram(const std::string& path)
{
    auto found = m_files.resolveFile(path);
    if (!found)
        return std::nullopt;
    // A folder, or a Windows program copied over without its execute bit, is nothing to run.
    struct stat info
    {
    };
    if (::stat(found->c_str(), &info) != 0 || !S_ISREG(info.st_mode) || ::access(found->c_str(), X_OK) != 0)
        return std::nullopt;
    return absolute(*found);
}

std::string SpawnProcesses::folderOnDisk(const std::string& dir)
{
    const std::string folder = launch::workingFolder(dir, m_home);
    return absolute(m_files.resolve(folder).value_or(folder));
}

int SpawnProcesses::start(const std::string& commandLine, const std::string& workDir)
{
    collectEnded();
    const std::string line = "launch " + fake::homeRelative(commandLine, m_home) + " | in "
        + fake::homeRelative(workDir, m_home);
    std::string error;
    int pid = 0;
    const auto argv = launch::resolveCommandLine(
        commandLine, m_home, pathEnv(), [this](const std::string& path) { return findProgram(path); });
    if (!argv)
        error = launch::splitCommandLine(commandLine).empty() ? "nothing to run" : "program not found";
    else
        pid = spawn(*argv, folderOnDisk(workDir), error);
    if (pid <= 0) {
        m_trace.effect(line + " failed");
        report("start " + commandLine, error);
        return 0;
    }
    m_trace.effect(line);
    m_children.push_back(pid);
    return pid;
}

int SpawnProcesses::spawn(const std::vector<std::string>& argv, const std::string& folder, std::string& error)
{
    std::error_code fsError;
    if (!fs::is_directory(folder, fsError)) {
        error = "no folder " + folder;
        return 0;
    }
    posix_spawn_file_actions_t actionsStore;
    if (int rc = posix_spawn_file_actions_init(&actionsStore); rc != 0) {
        error = std::system_category().message(rc);
        return 0;
    }
    const std::unique_ptr<posix_spawn_file_actions_t, FileActionsDeleter> actions(&actionsStore);
    posix_spawnattr_t attributesStore;
    if (int rc = posix_spawnattr_init(&attributesStore); rc != 0) {
        error = std::system_category().message(rc);
        return 0;
    }
    const std::unique_ptr<posix_spawnattr_t, AttributesDeleter> attributes(&attributesStore);

    // The game gets a clean start: no signal blocked or ignored because the front end had it so.
    sigset_t none;
    sigemptyset(&none);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setsigmask(attributes.get(), &none);
    posix_spawnattr_setsigdefault(attributes.get(), &all);
    posix_spawnattr_setflags(attributes.get(), POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    if (int rc = posix_spawn_file_actions_addchdir_np(actions.get(), folder.c_str()); rc != 0) {
        error = std::system_category().message(rc);
        return 0;
    }

    std::vector<char*> args;
    args.reserve(argv.size() + 1);
    for (const auto& word : argv)
        args.push_back(const_cast<char*>(word.c_str()));
    args.push_back(nullptr);

    pid_t pid = 0;
    const int rc = posix_spawn(&pid, args.front(), actions.get(), attributes.get(), args.data(), environ);
    if (rc != 0) {
        error = std::system_category().message(rc);
        return 0;
    }
    return pid;
}

void SpawnProcesses::waitForExit(int id)
{
    if (std::find(m_children.begin(), m_children.end(), id) == m_children.end())
        return;
    int status = 0;
    while (::waitpid(id, &status, 0) < 0 && errno == EINTR) { }
    forget(id);
    m_trace.effect("process exit " + std::to_string(id));
    if (afterWait)
        afterWait();
}

bool SpawnProcesses::running(int id)
{
    if (std::find(m_children.begin(), m_children.end(), id) == m_children.end())
        return false;
    int status = 0;
    if (::waitpid(id, &status, WNOHANG) == 0)
        return true;
    forget(id);
    m_trace.effect("process exit " + std::to_string(id));
    return false;
}

void SpawnProcesses::collectEnded()
{
    std::erase_if(m_children, [](int id) {
        int status = 0;
        return ::waitpid(id, &status, WNOHANG) != 0;
    });
}

void SpawnProcesses::forget(int id)
{
    std::erase(m_children, id);
}

bool SpawnProcesses::shellExecute(const std::string& verb, const std::string& file, const std::string& dir)
{
    collectEnded();
    m_trace.effect("shell " + verb + " " + fake::homeRelative(file, m_home) + " | in "
        + fake::homeRelative(dir, m_home));
    const std::string what = "open " + file;
    if (file.empty()) {
        report(what, "no file named");
        return false;
    }
    const auto opener = launch::resolveProgram(
        m_opener, m_home, pathEnv(), [this](const std::string& path) { return findProgram(path); });
    if (!opener) {
        report(what, m_opener + " not found");
        return false;
    }
    // A relative file is taken from the program's folder, like every file name of the settings.
    const std::string target = absolute(
        m_files.resolve(launch::workingFolder(file, m_home)).value_or(launch::workingFolder(file, m_home)));
    std::string error;
    const int pid = spawn({ *opener, target }, folderOnDisk(dir), error);
    if (pid <= 0) {
        report(what, error);
        return false;
    }
    m_children.push_back(pid);
    return true;
}

} // namespace ombrel::platform::linux
