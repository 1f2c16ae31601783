// CabinetFixture: a whole cabinet in a temporary program folder, run by the real application over fakes
// on a virtual clock: tests write its files, boot it, press keys, move time, read the state and trace.
#pragma once

#include "IniSample.h"
#include "RuntimeFixture.h"
#include "TempHome.h"

#include "core/FailureLog.h"
#include "platform/Platform.h"
#include "platform/fake/FakeCursor.h"
#include "platform/fake/FakeDisplayMode.h"
#include "platform/fake/FakeJoystick.h"
#include "platform/fake/FakeKeyInjector.h"
#include "platform/fake/FakeKeyState.h"
#include "platform/fake/FakeMediaPlayers.h"
#include "platform/fake/FakePower.h"
#include "platform/fake/FakeProcesses.h"
#include "startup/Application.h"
#include "startup/Cabinet.h"
#include "startup/MainForm.h"
#include "runtime/InputEvent.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace ombrel::test {

// The cabinet's keys (omkeys.cfg): arrows, pages, F5, Tab, Enter, Esc, 5 for the saver, M, 1 for info.
namespace vk {
constexpr int kEnter = 13, kEsc = 27, kPageUp = 33, kPageDown = 34, kUp = 38, kRight = 39, kDown = 40,
              kFive = 53, kA = 65, kM = 77;
}

struct CabinetSetup
{
    int scrollRate = 75;
    double saverDelay = 300;
    bool muted = false;
    int fontSize = 0; // the user's font size; 0 keeps the skin's
    bool keyFile = true; // the cabinet's key map; false: no key map at all
    std::vector<int> listSizes { 100, 3, 3, 3 }; // games of the lists 1, 2, 3...
    std::function<void(IniSample&)> ini = nullptr; // changes to ombrel.ini
    std::string skin = kDesignSkin; // the skin's skin.ini; empty: none
    // Every element where the browser form was designed, all of them shown, a text strip of one column.
    static constexpr const char* kDesignSkin
        = "1152,2856,1848,1332\r\n#TRUE#\r\n720,120,2124,2880\r\n#TRUE#\r\n696,5424,2124,2880\r\n#TRUE#\r\n"
          "348,2748,2040,504\r\n#TRUE#\r\n3960,120,7428,1632\r\n1\r\nlist\r\n1812,1572\r\n0,3504\r\n#TRUE#\r\n"
          "3720,3366\r\n#TRUE#\r\n0\r\n1\r\n2640,3360,1092,1452\r\n#TRUE#\r\n";
};

class CabinetFixture
{
public:
    CabinetFixture();
    ~CabinetFixture();

    void write(const CabinetSetup& setup);
    void start(); // the start-up form is loaded; no time passes
    void boot(); // start(), then on until the browser is up and the start-up form's timers are over
    void boot(const CabinetSetup& setup)
    {
        write(setup);
        boot();
    }

    void press(int key, int shift = 0) { input(runtime::InputKind::KeyDown, key, shift); }
    void release(int key, int shift = 0) { input(runtime::InputKind::KeyUp, key, shift); }
    void tap(int key)
    {
        press(key);
        release(key);
    }
    // A click of the left button on a form or control named as a replay script names it ("Main.ll(3)").
    void click(const std::string& target) { input(runtime::InputKind::Click, 0, 0, target); }
    // Any other mouse event on a named target; button 1 left, 2 right.
    void mouse(runtime::InputKind kind, const std::string& target, int button = 1) { input(kind, 0, 0, target, button); }
    void runFor(int64_t ms) { loop.runFor(ms); }

    startup::MainForm& main() { return forms().form<startup::MainForm>("Main"); }
    startup::Cabinet& cabinet() { return m_app->cabinet(); }
    runtime::FormStack& forms() { return m_app->forms(); }
    bool showing(const std::string& form)
    {
        runtime::Form* found = forms().existing(form);
        return found && found->loaded() && found->visible();
    }
    bool active(const std::string& form)
    {
        return forms().existing(form) && forms().activeForm() == forms().existing(form);
    }
    int listIndex() { return main().c.List1.listIndex(); }
    int curPath() { return cabinet().run.curPath; }

    // Trace lines since the last mark, and how many of them are exactly line.
    void mark() { m_mark = trace.lines.size(); }
    std::vector<std::string> sinceMark() const;
    int countSinceMark(const std::string& line) const
    {
        const auto lines = sinceMark();
        return static_cast<int>(std::count(lines.begin(), lines.end(), line));
    }

    TempHome home;
    runtime::VirtualClock clock;
    JumpingSource source { clock };
    runtime::EventLoop loop { clock };
    RecordingTrace trace;
    platform::DiskFiles files;
    platform::fake::FakeMediaPlayers media;
    platform::fake::FakeProcesses processes;
    platform::fake::FakeKeyInjector keys { trace };
    platform::fake::FakeKeyState keyState;
    platform::fake::FakeJoystick joystick;
    platform::fake::FakeCursor cursor { trace };
    platform::fake::FakeDisplayMode display { trace };
    platform::fake::FakePower power { trace };
    platform::fake::FakeRenderer renderer;
    platform::fake::FakeFonts fonts;
    platform::fake::FakeImages images;
    platform::Platform platform;
    std::ostringstream failureEcho; // standard error of the failure log
    core::FailureLog failures { home.path() + core::kFailureLogFileName, failureEcho };

private:
    void input(runtime::InputKind kind, int key, int shift, const std::string& target = "", int button = 1);
    std::unique_ptr<startup::Application> m_app;
    size_t m_mark = 0;
};

} // namespace ombrel::test
