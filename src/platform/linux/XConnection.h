// XConnection: one owned connection to an X display.
#pragma once

#include <memory>

struct _XDisplay; // Xlib's Display, kept out of headers that do not need Xlib

namespace ombrel::platform::linux {

// Each user opens its own connection, since an Xlib connection belongs to the thread that uses it and
// key injection runs on a worker thread.
class XConnection
{
public:
    // An empty connection when the display cannot be opened. A null name means $DISPLAY.
    static XConnection open(const char* displayName = nullptr);

    explicit operator bool() const { return m_display != nullptr; }
    _XDisplay* get() const { return m_display.get(); }

private:
    struct Closer
    {
        void operator()(_XDisplay* display) const;
    };
    std::unique_ptr<_XDisplay, Closer> m_display;
};

} // namespace ombrel::platform::linux
