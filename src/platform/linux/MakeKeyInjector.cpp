// makeKeyInjector: uinput first, then XTEST.
#include "platform/linux/MakeKeyInjector.h"

#include "platform/linux/UinputKeyInjector.h"
#include "platform/linux/XTestKeyInjector.h"

namespace ombrel::platform::linux {

std::unique_ptr<KeyInjector> makeKeyInjector(
    runtime::Trace& trace, const char* displayName, const std::string& uinputPath)
{
    if (auto uinput = UinputKeyInjector::open(trace, uinputPath))
        return uinput;
    if (auto xtest = XTestKeyInjector::open(trace, displayName))
        return xtest;
    return nullptr;
}

} // namespace ombrel::platform::linux
