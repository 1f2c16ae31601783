// Shutdown: powering the machine off when the front end ends, and the errors that reach the player.
#pragma once

#include "platform/Power.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace ombrel::system {

// A failed shutdown. Nothing in the program catches it on the way out: the top level shows
// errorBoxText() and ends the program, with the display mode already put back.
class ShutdownError : public std::runtime_error
{
public:
    ShutdownError(int number, const std::string& description);
    // One of platform::kErrShutdownFailed ... kErrBadShutdownFlags.
    int number() const { return m_number; }
    // "<program>.mShutDown", the module that raised it.
    const std::string& source() const { return m_source; }
    const std::string& description() const { return m_description; }

private:
    int m_number;
    std::string m_source;
    std::string m_description;
};

// Flags of the shutdown request; the program asks for power-off only.
constexpr int32_t kShutdownPowerOff = 8;

// Asks the machine to power off. Flags outside 0..31 raise kErrBadShutdownFlags; a refused permission
// raises one of the privilege errors; a refused power-off raises kErrShutdownFailed. True once the
// request is accepted. Every valid flag set asks for power-off: that is all the power service offers.
bool ShutdownSystem(platform::Power& power, int32_t flags);

// Makes sure this process may power the machine off. True when it may; otherwise raises the privilege
// error the power service answered with (kErrNoPrivilege for any answer it does not name).
bool enableShutdownPrivilege(platform::Power& power);

// The permission step always runs here: powering off always goes through the login manager's check.
bool isWinNT();

// The system's text for an errno value; empty for 0 and for numbers it has no text for.
std::string apiErrorText(int code);

// The text of the error box: where the error came from, its number in hexadecimal and its description.
// The caller puts it on the screen and on stderr.
std::string errorBoxText(const ShutdownError& error);

} // namespace ombrel::system
