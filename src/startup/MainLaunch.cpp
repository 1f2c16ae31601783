// MainLaunch: the browser form's side of starting a game: SELECT's start sound and the hand-off at its
// end, and the timers that look after a running game until the browser is in charge again.
#include "startup/MainForm.h"

#include "browser/PreviewPanels.h"
#include "launch/EmulatorDispatch.h"
#include "launch/KeySimulation.h"
#include "launch/LaunchContext.h"
#include "core/PassOver.h"
#include "launch/ReturnFromGame.h"
#include "startup/Cabinet.h"

#include <exception>

namespace ombrel::startup {

namespace {
constexpr const char* kStartSound = "com.mp3";
}

void MainForm::wireLaunch()
{
    c.List1.onDblClick = [this] { List1_DblClick(); };
    mpFX.player().onPlayStateChange = [this](int, int) { mpFX_PlayStateChange(); };
    timWfExit.onTimer = [this] { timWfExit_Timer(); };
}

launch::LaunchContext MainForm::launchContext()
{
    Cabinet& cabinet = m_cabinet;
    platform::Platform& platform = cabinet.platform;
    return launch::LaunchContext {
        *this,
        launch::LaunchTimers { timScr, timfx, timkey, timWfExit, timLock, timfullscreen, timescape },
        cabinet.settings,
        cabinet.catalogue,
        cabinet.run,
        keysSent,
        platform.processes,
        platform.keys,
        platform.keyState,
        cabinet.keys.keyExit,
        [this] { checkExitbut(); },
        [this] { return exitButtonDown(); },
    };
}

void MainForm::List1_DblClick()
{
    Cabinet& cabinet = m_cabinet;
    if (cabinet.saved.muted) {
        runEmu();
        return;
    }
    timfx.setEnabled(false);
    platform::MediaPlayer& player = mpFX.player();
    player.setFileName(browser::skinFile(cabinet.platform.files, cabinet.run, cabinet.saved, kStartSound));
    core::passOver(failures(), [&] { player.play(); });
    // A start sound that is missing or cannot be played never reports its end, and SELECT would do
    // nothing: the game starts at once instead.
    if (player.playState() != platform::kPlaying)
        runEmu();
}

void MainForm::mpFX_PlayStateChange()
{
    // Only the start sound's end starts the game; the click, the goodbye and the rest never do.
    platform::MediaPlayer& player = mpFX.player();
    if (player.playState() != platform::kStopped || player.fileName().empty())
        return;
    Cabinet& cabinet = m_cabinet;
    if (player.fileName()
        == browser::skinFile(cabinet.platform.files, cabinet.run, cabinet.saved, kStartSound))
        runEmu();
}

void MainForm::runEmu()
{
    launch::LaunchContext ctx = launchContext();
    launch::runEmu(ctx, c.List1.listIndex());
}

void MainForm::timkey_Timer()
{
    launch::LaunchContext ctx = launchContext();
    launch::timkey_Timer(ctx);
}

void MainForm::timfullscreen_Timer()
{
    launch::LaunchContext ctx = launchContext();
    launch::timfullscreen_Timer(ctx);
}

void MainForm::timescape_Timer()
{
    launch::LaunchContext ctx = launchContext();
    launch::timescape_Timer(ctx);
}

void MainForm::timWfExit_Timer()
{
    launch::LaunchContext ctx = launchContext();
    launch::timWfExit_Timer(ctx);
}

void MainForm::timLock_Timer()
{
    launch::LaunchContext ctx = launchContext();
    launch::timLock_Timer(ctx);
}

} // namespace ombrel::startup
