// XConnection: opening and closing an X display connection.
#include "platform/linux/XConnection.h"

#include <X11/Xlib.h>

namespace ombrel::platform::linux {

XConnection XConnection::open(const char* displayName)
{
    XConnection connection;
    connection.m_display.reset(XOpenDisplay(displayName));
    return connection;
}

void XConnection::Closer::operator()(_XDisplay* display) const
{
    XCloseDisplay(display);
}

} // namespace ombrel::platform::linux
