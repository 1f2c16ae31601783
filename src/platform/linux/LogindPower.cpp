// LogindPower: the two logind calls over sd-bus.
#include "platform/linux/LogindPower.h"

#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstring>
#include <memory>

namespace ombrel::platform::linux {

namespace {
constexpr const char* kService = "org.freedesktop.login1";
constexpr const char* kPath = "/org/freedesktop/login1";
constexpr const char* kManager = "org.freedesktop.login1.Manager";

struct BusClose
{
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};
struct MessageUnref
{
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using BusPtr = std::unique_ptr<sd_bus, BusClose>;
using MessagePtr = std::unique_ptr<sd_bus_message, MessageUnref>;

class BusError
{
public:
    BusError() = default;
    ~BusError() { sd_bus_error_free(&m_error); }
    BusError(const BusError&) = delete;
    BusError& operator=(const BusError&) = delete;
    sd_bus_error* get() { return &m_error; }
    // The errno the failure stands for, whether it came as a D-Bus error or as a return code.
    int errnoOf(int result) const
    {
        int fromError = sd_bus_error_is_set(&m_error) ? sd_bus_error_get_errno(&m_error) : 0;
        return fromError ? fromError : -result;
    }

private:
    // Empty, as SD_BUS_ERROR_NULL, which is a C compound literal that C++ does not have.
    sd_bus_error m_error {};
};

// Connects to the system bus, or straight to a peer; a negative errno on failure.
int connect(const std::string& peerAddress, BusPtr& bus)
{
    sd_bus* raw = nullptr;
    if (peerAddress.empty()) {
        int r = sd_bus_open_system(&raw);
        bus.reset(raw);
        return r;
    }
    int r = sd_bus_new(&raw);
    bus.reset(raw);
    if (r < 0)
        return r;
    if ((r = sd_bus_set_address(raw, peerAddress.c_str())) < 0)
        return r;
    return sd_bus_start(raw);
}
}

int LogindPower::checkPowerOffAllowed()
{
    m_lastError = 0;
    BusPtr bus;
    if (int r = connect(m_peerAddress, bus); r < 0) {
        m_lastError = -r;
        return kErrNoPrivilege;
    }
    BusError error;
    sd_bus_message* raw = nullptr;
    int r = sd_bus_call_method(bus.get(), kService, kPath, kManager, "CanPowerOff", error.get(), &raw, "");
    MessagePtr reply(raw);
    if (r < 0) {
        m_lastError = error.errnoOf(r);
        return kErrNoPrivilege;
    }
    const char* answer = nullptr;
    if ((r = sd_bus_message_read(reply.get(), "s", &answer)) < 0 || !answer) {
        m_lastError = r < 0 ? -r : EBADMSG;
        return kErrNoPrivilege;
    }
    if (std::strcmp(answer, "yes") == 0 || std::strcmp(answer, "challenge") == 0)
        return 0;
    // "na": this machine cannot be powered off from here at all; "no" (or anything else): not this user.
    m_lastError = std::strcmp(answer, "na") == 0 ? EOPNOTSUPP : EPERM;
    return kErrNoPrivilege;
}

int LogindPower::powerOff()
{
    m_lastError = 0;
    BusPtr bus;
    if (int r = connect(m_peerAddress, bus); r < 0) {
        m_lastError = -r;
        return kErrShutdownFailed;
    }
    BusError error;
    int interactive = 0;
    int r = sd_bus_call_method(
        bus.get(), kService, kPath, kManager, "PowerOff", error.get(), nullptr, "b", interactive);
    if (r < 0) {
        m_lastError = error.errnoOf(r);
        return kErrShutdownFailed;
    }
    return 0;
}

} // namespace ombrel::platform::linux
