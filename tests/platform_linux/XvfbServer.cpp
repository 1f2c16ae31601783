// XvfbServer: starts Xvfb, learns its display number through -displayfd, and ends it.
#include "XvfbServer.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <vector>

extern char** environ;

namespace ombrel::test {

namespace {

constexpr int kStartTimeoutMs = 10000;

void stop(pid_t pid)
{
    ::kill(pid, SIGTERM);
    int status = 0;
    ::waitpid(pid, &status, 0);
}

} // namespace

std::unique_ptr<XvfbServer> XvfbServer::start(const std::string& screen)
{
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0)
        return nullptr;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    // The server writes its display number to fd 3 once it accepts connections.
    posix_spawn_file_actions_adddup2(&actions, fds[1], 3);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    std::vector<std::string> words
        = { "Xvfb", "-displayfd", "3", "-nolisten", "tcp", "-screen", "0", screen };
    std::vector<char*> argv;
    for (auto& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int rc = posix_spawnp(&pid, "Xvfb", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(fds[1]);
    if (rc != 0) {
        ::close(fds[0]);
        return nullptr;
    }
    std::string number;
    pollfd readable { fds[0], POLLIN, 0 };
    while (::poll(&readable, 1, kStartTimeoutMs) > 0) {
        char c = 0;
        if (::read(fds[0], &c, 1) != 1 || !std::isdigit(static_cast<unsigned char>(c)))
            break;
        number += c;
    }
    ::close(fds[0]);
    if (number.empty()) {
        stop(pid);
        return nullptr;
    }
    return std::unique_ptr<XvfbServer>(new XvfbServer(pid, ":" + number));
}

XvfbServer::XvfbServer(pid_t pid, std::string name)
    : m_pid(pid)
    , m_name(std::move(name))
{
}

XvfbServer::~XvfbServer()
{
    stop(m_pid);
}

} // namespace ombrel::test
