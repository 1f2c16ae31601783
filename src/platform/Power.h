// Power: switching the machine off. Results are the system's error numbers (0 success).
#pragma once

namespace ombrel::platform {

// The error numbers of the shutdown service, as 32-bit values (negative as int).
constexpr int kErrShutdownFailed = static_cast<int>(0x8004062Bu);   // the power-off was refused
constexpr int kErrNoPrivilegeValue = static_cast<int>(0x8004062Cu); // no such privilege
constexpr int kErrNoProcess = static_cast<int>(0x8004062Du);        // this process cannot be named
constexpr int kErrNoPrivilege = static_cast<int>(0x8004062Eu);      // not allowed to power off
constexpr int kErrBadShutdownFlags = static_cast<int>(0x8004062Fu); // flags outside 0..31

class Power {
public:
    virtual ~Power() = default;
    // May this process power the machine off? 0 yes, else an error number.
    virtual int checkPowerOffAllowed() = 0;
    // Power off. 0 when the request was accepted, else an error number.
    virtual int powerOff() = 0;
    // The errno behind the last failure of either call (0 when there is none), for the detail of the
    // message the player sees.
    virtual int lastSystemError() { return 0; }
};

} // namespace ombrel::platform
