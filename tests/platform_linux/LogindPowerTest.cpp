// Tests of LogindPower against a stand-in logind reached straight over a socket (never the system bus,
// which could really power the machine off).
#include "platform/linux/LogindPower.h"

#include "TempHome.h"

#include <systemd/sd-bus.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace ombrel::platform::linux {
namespace {

// Answers CanPowerOff and PowerOff on one socket, a connection at a time, on its own thread.
class StandInLogind
{
public:
    StandInLogind(const std::filesystem::path& socketPath, std::string canPowerOff, bool refusePowerOff)
        : m_answer(std::move(canPowerOff))
        , m_refuse(refusePowerOff)
    {
        m_listen = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un addr {};
        addr.sun_family = AF_UNIX;
        socketPath.string().copy(addr.sun_path, sizeof addr.sun_path - 1);
        if (bind(m_listen, reinterpret_cast<sockaddr*>(&addr), sizeof addr) != 0 || listen(m_listen, 4) != 0)
            ADD_FAILURE() << "cannot listen on " << socketPath;
        if (pipe2(m_stop, O_CLOEXEC) != 0)
            ADD_FAILURE() << "no pipe";
        m_thread = std::thread([this] { serve(); });
    }
    ~StandInLogind()
    {
        (void)!write(m_stop[1], "x", 1);
        m_thread.join();
        close(m_listen);
        close(m_stop[0]);
        close(m_stop[1]);
    }

    int powerOffCalls() const { return m_powerOffCalls; }
    bool askedInteractive() const { return m_interactive; }

private:
    void serve()
    {
        for (;;) {
            pollfd fds[2] = { { m_listen, POLLIN, 0 }, { m_stop[0], POLLIN, 0 } };
            if (poll(fds, 2, -1) < 0 || fds[1].revents)
                return;
            int fd = accept4(m_listen, nullptr, nullptr, SOCK_CLOEXEC);
            if (fd >= 0)
                talk(fd);
        }
    }

    void talk(int fd)
    {
        sd_bus* bus = nullptr;
        sd_id128_t id;
        if (sd_bus_new(&bus) < 0 || sd_id128_randomize(&id) < 0) {
            close(fd);
            return;
        }
        static const sd_bus_vtable vtable[] = { SD_BUS_VTABLE_START(0),
            SD_BUS_METHOD("CanPowerOff", "", "s", canPowerOff, SD_BUS_VTABLE_UNPRIVILEGED),
            SD_BUS_METHOD("PowerOff", "b", "", powerOff, SD_BUS_VTABLE_UNPRIVILEGED), SD_BUS_VTABLE_END };
        sd_bus_set_fd(bus, fd, fd);
        sd_bus_set_server(bus, 1, id);
        sd_bus_add_object_vtable(
            bus, nullptr, "/org/freedesktop/login1", "org.freedesktop.login1.Manager", vtable, this);
        for (int r = sd_bus_start(bus); r >= 0;) {
            r = sd_bus_process(bus, nullptr);
            if (r == 0)
                r = sd_bus_wait(bus, UINT64_MAX);
        }
        sd_bus_close_unref(bus);
    }

    static int canPowerOff(sd_bus_message* call, void* self, sd_bus_error*)
    {
        return sd_bus_reply_method_return(call, "s", static_cast<StandInLogind*>(self)->m_answer.c_str());
    }

    static int powerOff(sd_bus_message* call, void* self, sd_bus_error* error)
    {
        auto* logind = static_cast<StandInLogind*>(self);
        int interactive = 0;
        if (sd_bus_message_read(call, "b", &interactive) < 0)
            return -EINVAL;
        logind->m_interactive = interactive != 0;
        ++logind->m_powerOffCalls;
        if (logind->m_refuse)
            return sd_bus_error_set_const(error, SD_BUS_ERROR_ACCESS_DENIED, "Permission denied");
        return sd_bus_reply_method_return(call, "");
    }

    std::string m_answer;
    bool m_refuse;
    int m_listen = -1;
    int m_stop[2] = { -1, -1 };
    std::atomic<int> m_powerOffCalls = 0;
    std::atomic<bool> m_interactive = false;
    std::thread m_thread;
};

// What the check and the power-off give for each answer of logind, or when nobody listens; the power-off
// is asked for without a prompt, and the check never powers off.
TEST(LogindPower, CheckAndPowerOffGiveLogindsAnswerAndItsReason)
{
    const struct
    {
        const char* name;
        const char* answer; // to CanPowerOff; nullptr: nothing listens on the bus
        bool refuse; // PowerOff is denied
        bool powerOff; // call powerOff() rather than the check
        int result, error;
    } rows[] = {
        { "yes", "yes", false, false, 0, 0 },
        { "challenge", "challenge", false, false, 0, 0 },
        { "no", "no", false, false, kErrNoPrivilege, EPERM },
        { "na", "na", false, false, kErrNoPrivilege, EOPNOTSUPP },
        { "empty", "", false, false, kErrNoPrivilege, EPERM },
        { "powerOff", "yes", false, true, 0, 0 },
        { "powerOffDenied", "yes", true, true, kErrShutdownFailed, EACCES },
        { "checkWithNobody", nullptr, false, false, kErrNoPrivilege, ENOENT },
        { "powerOffWithNobody", nullptr, false, true, kErrShutdownFailed, ENOENT },
    };
    test::TempHome home;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove(home.root() / "bus");
        std::optional<StandInLogind> logind;
        if (row.answer)
            logind.emplace(home.root() / "bus", row.answer, row.refuse);
        LogindPower power("unix:path=" + (home.root() / "bus").string());
        EXPECT_EQ(row.powerOff ? power.powerOff() : power.checkPowerOffAllowed(), row.result);
        EXPECT_EQ(power.lastSystemError(), row.error);
        if (logind) {
            EXPECT_EQ(logind->powerOffCalls(), row.powerOff ? 1 : 0);
            EXPECT_FALSE(logind->askedInteractive());
        }
    }
}

} // namespace
} // namespace ombrel::platform::linux
