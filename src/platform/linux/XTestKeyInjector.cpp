// XTestKeyInjector: virtual keys turned into X key codes and faked through XTEST.
#include "platform/linux/XTestKeyInjector.h"

#include "platform/linux/VirtualKeys.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <string>

namespace ombrel::platform::linux {

std::unique_ptr<XTestKeyInjector> XTestKeyInjector::open(
    runtime::Trace& trace, const char* displayName, KeyPacing pacing)
{
    XConnection connection = XConnection::open(displayName);
    if (!connection)
        return nullptr;
    int eventBase = 0;
    int errorBase = 0;
    int major = 0;
    int minor = 0;
    if (!XTestQueryExtension(connection.get(), &eventBase, &errorBase, &major, &minor))
        return nullptr;
    return std::unique_ptr<XTestKeyInjector>(
        new XTestKeyInjector(std::move(connection), trace, std::move(pacing)));
}

XTestKeyInjector::XTestKeyInjector(XConnection connection, runtime::Trace& trace, KeyPacing pacing)
    : m_connection(std::move(connection))
    , m_trace(trace)
    , m_queue([this](int vk, bool up) { send(vk, up); }, std::move(pacing))
{
}

void XTestKeyInjector::keyEvent(int vk, bool up)
{
    m_trace.effect(std::string(up ? "inject up " : "inject down ") + std::to_string(vk));
    m_queue.push(vk, up);
}

void XTestKeyInjector::releaseAll()
{
    m_trace.effect("inject release-all");
    m_queue.releaseAll();
}

void XTestKeyInjector::send(int vk, bool up)
{
    const VirtualKey* key = findVirtualKey(vk);
    if (key == nullptr)
        return;
    Display* display = m_connection.get();
    const KeyCode code = XKeysymToKeycode(display, key->keysym);
    if (code == 0)
        return;
    XTestFakeKeyEvent(display, code, up ? False : True, CurrentTime);
    // A round trip, so the server has the event before the gap to the next one starts.
    XSync(display, False);
}

} // namespace ombrel::platform::linux
