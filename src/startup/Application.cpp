// Application: makes the forms, wires the loop to them, and starts the program with the start-up form.
#include "startup/Application.h"

#include "catalogue/ListFiles.h"
#include "config/SavedState.h"
#include "core/LeftoverTemps.h"
#include "input/KeyMap.h"
#include "startup/BlankerForm.h"
#include "startup/Cabinet.h"
#include "startup/ErrorBoxForm.h"
#include "startup/MainForm.h"
#include "startup/StandInForms.h"
#include "startup/StateDump.h"

namespace ombrel::startup {

namespace {

    runtime::FormServices servicesOf(platform::Platform& platform, core::FailureLog& failures)
    {
        return { platform.loop, platform.trace, platform.fonts, platform.images, platform.files, platform.renderer,
            platform.home, failures };
    }

} // namespace

Application::Application(platform::Platform& platform, core::FailureLog& failures)
    : m_platform(platform)
    , m_forms(servicesOf(platform, failures))
    , m_cabinet(std::make_unique<Cabinet>(Cabinet { platform, m_forms, platform.home, {}, {}, {}, {}, {}, {}, {}, {} }))
{
    Cabinet& cabinet = *m_cabinet;
    m_forms.define("blanker", [&cabinet](runtime::FormStack& s) { return std::make_unique<BlankerForm>(s, cabinet); });
    m_forms.define("background", [](runtime::FormStack& s) { return std::make_unique<BackgroundForm>(s); });
    m_forms.define("Main", [&cabinet](runtime::FormStack& s) { return std::make_unique<MainForm>(s, cabinet); });
    defineStandInForms(m_forms, cabinet);
    m_forms.define("ErrorBox", [](runtime::FormStack& s) { return std::make_unique<ErrorBoxForm>(s); });
    platform.loop.setInputHandler([this](const runtime::InputEvent& event) { m_forms.dispatch(event); });
    platform.loop.setPaintHandler([this] { m_forms.paintIfChanged(); });
}

Application::~Application()
{
    m_platform.loop.setInputHandler({});
    m_platform.loop.setPaintHandler({});
}

Cabinet& Application::cabinet() { return *m_cabinet; }

void Application::start()
{
    // First of all: nothing of this run has written yet, so a temporary file that carries this process's
    // id (a restart may get the same one) is a left-over too.
    removeLeftoverTemps();
    m_forms.form("blanker").show();
}

void Application::removeLeftoverTemps()
{
    std::vector<std::string> files { m_cabinet->homeFile(config::kSavedStateFileName),
        m_cabinet->homeFile(input::kKeyMapFileName) };
    for (int path = 1; path <= config::kDaphnePath; ++path) {
        // The list file as the scan writes it: under the case of letters it has on disk.
        const std::string named = m_cabinet->homeFile(catalogue::listFileName(path));
        files.push_back(m_platform.files.resolve(named).value_or(named));
    }
    const core::LeftoverSweep sweep = core::removeLeftoverTemps(files);
    for (const std::string& path : sweep.removed)
        m_forms.trace("file remove " + m_forms.relative(path));
    for (const std::string& path : sweep.notRemoved)
        m_forms.trace("file remove " + m_forms.relative(path) + " failed");
    // Nothing here stops the start: a folder the program may not write to only keeps its left-overs.
    for (const std::string& problem : sweep.problems)
        m_forms.failures().note(problem);
}

std::vector<std::string> Application::dump() const
{
    return dumpState(m_forms, *m_cabinet, m_platform.fonts);
}

} // namespace ombrel::startup
