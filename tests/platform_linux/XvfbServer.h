// XvfbServer: a private X server for tests that need a real display with XTEST.
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>

namespace ombrel::test {

class XvfbServer
{
public:
    // Starts Xvfb on a free display number, its screen WxHxDEPTH; nullptr when it is missing or does not
    // come up.
    static std::unique_ptr<XvfbServer> start(const std::string& screen = "640x480x24");
    ~XvfbServer();
    XvfbServer(const XvfbServer&) = delete;
    XvfbServer& operator=(const XvfbServer&) = delete;

    // ":N", for XOpenDisplay.
    const std::string& name() const { return m_name; }

private:
    XvfbServer(pid_t pid, std::string name);
    pid_t m_pid;
    std::string m_name;
};

} // namespace ombrel::test
