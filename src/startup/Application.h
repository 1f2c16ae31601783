// Application: the one object that owns the cabinet's shared state and forms, and starts the program.
#pragma once

#include "core/FailureLog.h"
#include "platform/Platform.h"
#include "runtime/FormStack.h"

#include <memory>
#include <string>
#include <vector>

namespace ombrel::startup {

struct Cabinet;

class Application {
public:
    // The failure log is made by the caller, who knows where standard error and the wall clock are.
    Application(platform::Platform& platform, core::FailureLog& failures);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    runtime::FormStack& forms() { return m_forms; }
    platform::Platform& platform() { return m_platform; }
    Cabinet& cabinet();

    // The program begins: the start-up form is loaded. Then run the platform's loop.
    void start();
    // The state a replay "dump" shows, one line each (docs/replay.md): forms, timers, controls, the
    // list, the shared values and the settings.
    std::vector<std::string> dump() const;

private:
    // Takes away what a kill in the middle of a write left beside the program's files.
    void removeLeftoverTemps();

    platform::Platform& m_platform;
    runtime::FormStack m_forms;
    std::unique_ptr<Cabinet> m_cabinet;
};

} // namespace ombrel::startup
