// FakeKeyInjector: injected keys as trace lines.
#include "platform/fake/FakeKeyInjector.h"

#include <string>

namespace ombrel::platform::fake {

void FakeKeyInjector::keyEvent(int vk, bool up)
{
    m_trace.effect(std::string(up ? "inject up " : "inject down ") + std::to_string(vk));
}

void FakeKeyInjector::releaseAll() { m_trace.effect("inject release-all"); }

} // namespace ombrel::platform::fake
