// Power: switching the machine off. Results are the system's error numbers (0 success).
#pragma once

namespace ombrel::platform {

class Power {
public:
    virtual ~Power() = default;
    // May this process power the machine off? 0 yes, else an error number.
    virtual int checkPowerOffAllowed() = 0;
    // Power off. 0 when the request was accepted, else an error number.
    virtual int powerOff() = 0;
};

} // namespace ombrel::platform
