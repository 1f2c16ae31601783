// Shutdown: the power-off request, its permission step and the texts of its errors.
#include "system/Shutdown.h"

#include <cstdio>
#include <cstring>

namespace ombrel::system {

namespace {
constexpr const char* kErrorSource = "ombrel.mShutDown";

[[noreturn]] void raise(int number, const std::string& description)
{
    throw ShutdownError(number, description);
}

std::string privilegeDescription(int number, const std::string& detail)
{
    std::string reason;
    if (number == platform::kErrNoPrivilegeValue)
        reason = "Can't find the SE_SHUTDOWN_NAME privilege value.";
    else if (number == platform::kErrNoProcess)
        reason = "Can't determine the current process.";
    else
        reason = "You do not have the privileges to shutdown this system.";
    return "Can't enable shutdown: " + reason + " [" + detail + "]";
}
}

ShutdownError::ShutdownError(int number, const std::string& description)
    : std::runtime_error(description)
    , m_number(number)
    , m_source(kErrorSource)
    , m_description(description)
{
}

bool ShutdownSystem(platform::Power& power, int32_t flags)
{
    if (flags < 0 || flags > 31)
        raise(
            platform::kErrBadShutdownFlags, "Invalid parameter to ShutdownSystem: " + std::to_string(flags));
    if (isWinNT() && !enableShutdownPrivilege(power))
        return false;
    if (power.powerOff() != 0)
        raise(
            platform::kErrShutdownFailed, "ShutdownSystem failed: " + apiErrorText(power.lastSystemError()));
    return true;
}

bool enableShutdownPrivilege(platform::Power& power)
{
    int answer = power.checkPowerOffAllowed();
    if (answer == 0)
        return true;
    int number = answer;
    if (number != platform::kErrNoPrivilegeValue && number != platform::kErrNoProcess)
        number = platform::kErrNoPrivilege;
    raise(number, privilegeDescription(number, apiErrorText(power.lastSystemError())));
}

bool isWinNT()
{
    return true;
}

std::string apiErrorText(int code)
{
    if (code == 0)
        return {};
    const char* text = strerrordesc_np(code);
    return text ? text : "";
}

std::string errorBoxText(const ShutdownError& error)
{
    char number[16];
    std::snprintf(number, sizeof number, "%08X", static_cast<uint32_t>(error.number()));
    return error.source() + " error " + number + ": " + error.description();
}

} // namespace ombrel::system
