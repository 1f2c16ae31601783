// LogindPower: powering the machine off through systemd-logind on the system bus.
#pragma once

#include "platform/Power.h"

#include <string>
#include <utility>

namespace ombrel::platform::linux {

// logind decides through polkit whether this user may power off: a seat's user usually may, without a
// password. Both calls connect afresh, since each is made at most once in a run.
//
// checkPowerOffAllowed() asks CanPowerOff: "yes" and "challenge" let the request go on (logind has the
// last word when the power-off is asked for); "no", "na" and any bus failure answer kErrNoPrivilege.
// powerOff() asks PowerOff without an interactive password prompt: nobody at a cabinet can answer one.
// A refusal answers kErrShutdownFailed. lastSystemError() holds the errno behind the last failure.
class LogindPower final : public Power
{
public:
    // The system bus.
    LogindPower() = default;
    // A logind reached directly at a D-Bus address, without a bus in between ("unix:path=...").
    explicit LogindPower(std::string peerAddress)
        : m_peerAddress(std::move(peerAddress))
    {
    }

    int checkPowerOffAllowed() override;
    int powerOff() override;
    int lastSystemError() override { return m_lastError; }

private:
    std::string m_peerAddress;
    int m_lastError = 0;
};

} // namespace ombrel::platform::linux
