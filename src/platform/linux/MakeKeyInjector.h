// makeKeyInjector: the key injection backend a real run uses on this machine.
#pragma once

#include "platform/KeyInjector.h"
#include "runtime/Trace.h"

#include <memory>
#include <string>

namespace ombrel::platform::linux {

// A uinput virtual keyboard when uinputPath can be opened for writing, since it reaches every display
// server; else XTEST on the X display (a null name means $DISPLAY); else nullptr, and the caller falls
// back to an injector that only records, with a one-line warning.
std::unique_ptr<KeyInjector> makeKeyInjector(
    runtime::Trace& trace, const char* displayName = nullptr, const std::string& uinputPath = "/dev/uinput");

} // namespace ombrel::platform::linux
