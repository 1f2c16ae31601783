// MainKeys: the browser form's keyboard: the thirteen commands, the timers that turn a held key into
// steps, the countdown to the saver, the mouse spinner, the exit command and the end of the program.
//
// A key never moves the selection itself: its press enables a repeat timer, each tick makes one step
// and redraws, and the release of any key stops every repeat timer and redraws once more. So a held key
// steps at the timer's rate, and a tap shorter than the interval makes no step at all.
#include "startup/MainForm.h"

#include "browser/PreviewPanels.h"
#include "browser/SkinLayout.h"
#include "config/SavedState.h"
#include "core/VbMath.h"
#include "input/Commands.h"
#include "input/KeyMap.h"
#include "launch/ReturnFromGame.h"
#include "core/PassOver.h"
#include "runtime/EventLoop.h"
#include "runtime/FormStack.h"
#include "startup/Cabinet.h"
#include "startup/ErrorBoxForm.h"
#include "system/DisplayModes.h"
#include "system/Shutdown.h"

#include <cstdint>
#include <exception>
#include <iostream>
#include <limits>

namespace ombrel::startup {

namespace {

// The slowest repeat rate the path timers and the joystick poll can take: three times the
// movement rate must fit a 16-bit value.
constexpr int kMaxSlowInterval = std::numeric_limits<int16_t>::max();

} // namespace

void MainForm::wireKeys()
{
    mpFX.setVisible(false);
    timScr.onTimer = [this] { timScr_Timer(); };
    // A click on a preview panel and a movement key with Shift, Ctrl or Alt do the same: a full view.
    for (runtime::PictureControl* panel : { &c.xMarquee, &c.xScreen, &c.xFlyer, &c.xCabinet })
        panel->onClick = [this, panel] { fullView(*panel); };
}

void MainForm::cabRefresh()
{
    browser::cabRefresh(c,
        browser::PreviewContext { mpFX.player(), m_cabinet.platform.files, m_cabinet.saved, m_cabinet.run,
            m_cabinet.keys.keyExit, m_cabinet.settings, m_cabinet.catalogue, m_cabinet.scheme.schemeBack,
            m_cabinet.home });
    auto& cabinet = m_cabinet;
    readAhead.wish(c, { cabinet.platform.images, cabinet.settings, cabinet.catalogue, cabinet.run, cabinet.home });
}

void MainForm::fullView(runtime::PictureControl& panel)
{
    auto& run = m_cabinet.run;
    run.saverAuto = false;
    run.curPic = panel.fileName();
    stack().form("ScreenSav").show();
}

void MainForm::Form_KeyDown(int keyCode, int shift)
{
    using input::LogicalCommand;
    // The countdown stands still for as long as any key is down, one with no command too.
    timScr.setEnabled(false);
    const std::optional<LogicalCommand> command = input::commandForKey(keyCode, m_cabinet.keys);
    if (!command)
        return;
    // A held key repeats its KeyDown; enabling a running repeat timer changes nothing, so the repeats
    // add no steps.
    auto moveOrView = [&](runtime::Timer& timer, runtime::PictureControl& panel) {
        if (shift != 0) {
            if (panel.onClick)
                panel.onClick();
        } else {
            timer.setEnabled(true);
        }
    };
    core::passOver(failures(), [&] {
        switch (*command) {
        case LogicalCommand::Info: {
            runtime::Form& info = stack().form("Info");
            info.show();
            info.setFocus();
            break;
        }
        case LogicalCommand::Config:
            stack().form("frmMenu").show();
            break;
        case LogicalCommand::Mute:
            toggleMute();
            break;
        case LogicalCommand::Exit:
            exitCommand();
            break;
        case LogicalCommand::ScreenSaver:
            startSaverNow();
            break;
        case LogicalCommand::Up:
            moveOrView(timUp, c.xMarquee);
            break;
        case LogicalCommand::Down:
            moveOrView(timdown, c.xScreen);
            break;
        case LogicalCommand::NextPath:
            timNp.setEnabled(true);
            break;
        case LogicalCommand::PrevPath:
            timPp.setEnabled(true);
            break;
        case LogicalCommand::RightPage:
            moveOrView(timright, c.xFlyer);
            break;
        case LogicalCommand::LeftPage:
            moveOrView(timleft, c.xCabinet);
            break;
        case LogicalCommand::Refresh:
            scan.refreshAll();
            break;
        case LogicalCommand::Select:
            timScr.setEnabled(false);
            if (c.List1.onDblClick)
                c.List1.onDblClick();
            break;
        }
    });
}

void MainForm::Form_KeyUp(int, int)
{
    // Releasing any key stops every repeat, so of two movement keys held together, letting go of
    // either stops both.
    core::passOver(failures(), [&] {
        for (runtime::Timer* timer : { &timdown, &timUp, &timleft, &timright, &timNp, &timPp })
            timer->setEnabled(false);
    });
    core::passOver(failures(), [&] {
        timScr.setEnabled(true);
        m_cabinet.run.saverCount = m_cabinet.saved.saverDelay;
    });
    // The pictures and the click of the row the selection came to rest on.
    core::passOver(failures(), [&] { cabRefresh(); });
}

void MainForm::timUp_Timer()
{
    readAhead.stepped(-1);
    auto& list = c.List1;
    // Held against the top of the list, the key loads nothing.
    if (list.listCount() > 0 && list.listIndex() != 0) {
        core::passOver(failures(), [&] { list.setListIndex(list.listIndex() - 1); });
        core::passOver(failures(), [&] { nav.RefreshList(); });
        core::passOver(failures(), [&] { cabRefresh(); });
    }
}

void MainForm::timdown_Timer()
{
    readAhead.stepped(1);
    auto& list = c.List1;
    if (list.listCount() >= 1 && list.listIndex() != list.listCount() - 1) {
        core::passOver(failures(), [&] { list.setListIndex(list.listIndex() + 1); });
        core::passOver(failures(), [&] { nav.RefreshList(); });
        core::passOver(failures(), [&] { cabRefresh(); });
    }
}

void MainForm::timleft_Timer()
{
    readAhead.stepped(-m_cabinet.run.midRow);
    core::passOver(failures(), [&] { nav.gPrevPage(); });
    core::passOver(failures(), [&] { nav.RefreshList(); });
    core::passOver(failures(), [&] { cabRefresh(); });
}

void MainForm::timright_Timer()
{
    readAhead.stepped(m_cabinet.run.midRow);
    core::passOver(failures(), [&] { nav.gNextPage(); });
    core::passOver(failures(), [&] { nav.RefreshList(); });
    core::passOver(failures(), [&] { cabRefresh(); });
}

void MainForm::timNp_Timer()
{
    readAhead.stepped(0);
    core::passOver(failures(), [&] { nav.gNextPath(); });
    core::passOver(failures(), [&] { nav.RefreshList(); });
    core::passOver(failures(), [&] { cabRefresh(); });
}

void MainForm::timPp_Timer()
{
    readAhead.stepped(0);
    core::passOver(failures(), [&] { nav.gPrevPath(); });
    core::passOver(failures(), [&] { nav.RefreshList(); });
    core::passOver(failures(), [&] { cabRefresh(); });
}

void MainForm::setSRate()
{
    // A rate of 15 ms or less counts as not set: every timer keeps its 75 ms.
    const int rate = m_cabinet.settings.scrollRate;
    if (rate <= 15)
        return;
    for (runtime::Timer* timer : { &timUp, &timdown, &timleft, &timright })
        timer->setInterval(rate);
    // A list is a bigger step than a row, so the path keys and the joystick go three times slower.
    // NOTE: a rate whose triple does not fit 16 bits stops here, and those three keep their rate.
    const int slow = 3 * rate;
    if (slow > kMaxSlowInterval)
        return;
    for (runtime::Timer* timer : { &timNp, &timPp, &timjoy })
        timer->setInterval(slow);
    for (runtime::Timer* timer : { &timUp, &timdown, &timleft, &timright, &timNp, &timPp })
        timer->setEnabled(false);
}

void MainForm::toggleMute()
{
    auto& saved = m_cabinet.saved;
    platform::MediaPlayer& player = mpFX.player();
    if (!saved.muted) {
        saved.muted = true;
        if (player.playState() == platform::kPlaying)
            player.stop();
    } else {
        saved.muted = false;
    }
    stack().form("frmMute").show();
}

void MainForm::timScr_Timer()
{
    auto& run = m_cabinet.run;
    // -1 is the saver switched off; any other value counts down.
    if (run.saverCount == -1)
        return;
    run.saverCount -= 1;
    if (run.saverCount > 0)
        return;
    run.saverAuto = true;
    timScr.setEnabled(false);
    core::passOver(failures(), [&] {
        runtime::Form& saver = stack().form("ScreenSav");
        saver.setHeight(height());
        saver.setWidth(width());
        saver.show();
    });
    core::passOver(failures(), [&] { hide(); });
}

void MainForm::startSaverNow()
{
    // The next count reaches 0 whatever the delay, Off included.
    m_cabinet.run.saverCount = 1;
    timScr_Timer();
}

void MainForm::SaveCfg()
{
    auto& saved = m_cabinet.saved;
    saved.lastIndex = core::toInteger(c.List1.listIndex()).value_or(-1);
    saved.lastPath = core::toInteger(m_cabinet.run.curPath).value_or(0);
    const std::string path = m_cabinet.homeFile(config::kSavedStateFileName);
    const std::string error = config::saveCfg(m_cabinet.platform.files, path, saved);
    failures().note(error);
    stack().trace("file write " + stack().relative(path) + (error.empty() ? "" : " failed"));
}

void MainForm::exitCommand()
{
    auto& cabinet = m_cabinet;
    // The key map is saved on every exit, whether it changed or not.
    core::passOver(failures(), [&] {
        const std::string path = cabinet.homeFile(input::kKeyMapFileName);
        const std::string error = input::saveKeys(cabinet.platform.files, path, cabinet.keys);
        failures().note(error);
        stack().trace("file write " + stack().relative(path) + (error.empty() ? "" : " failed"));
    });
    core::passOver(failures(), [&] { SaveCfg(); });
    core::passOver(failures(), [&] {
        if (!cabinet.saved.muted) {
            platform::MediaPlayer& player = mpFX.player();
            player.setFileName(
                browser::skinFile(cabinet.platform.files, cabinet.run, cabinet.saved, "end.mp3"));
            player.play();
        }
    });
    // The browser stays in use while the goodbye plays; its keys still work.
    timfx.setEnabled(true);
}

void MainForm::timfx_Timer()
{
    platform::MediaPlayer& player = mpFX.player();
    if (!player.fileName().empty() && player.playState() != platform::kStopped) {
        // The first look comes a second after the exit command; from then on, every millisecond.
        timfx.setInterval(1);
        return;
    }
    timfx.setEnabled(false);
    auto& settings = m_cabinet.settings;
    auto& run = m_cabinet.run;
    core::passOver(failures(), [&] { browser::KillDisplay(c, run); });
    // The picture goes back from the TV output to the monitor.
    if (settings.tvOut)
        core::passOver(failures(), [&] { launch::startMonitor(m_cabinet.platform.keys); });
    core::passOver(failures(), [&] {
        // Only the widths tell whether the mode was changed at start.
        if (run.deskW != settings.scrW)
            system::restoreRes(m_cabinet.platform.display, run.deskW, run.deskH, settings.deskBits,
                settings.deskFreq);
    });
    if (settings.powerOff) {
        try {
            system::ShutdownSystem(m_cabinet.platform.power, system::kShutdownPowerOff);
        } catch (const system::ShutdownError& error) {
            // The machine stays on and the program ends all the same, once the player has been told.
            const std::string text = system::errorBoxText(error);
            std::cerr << "ombrel: " << text << "\n";
            stack().trace("error " + text);
            // The browser was taken down for the end; it must not come back over the message.
            if (auto* blanker = stack().existing("blanker"))
                if (auto* timexit = blanker->findTimer("timexit"))
                    timexit->setEnabled(false);
            stack().form<ErrorBoxForm>("ErrorBox").showError(text, 1);
            return;
        }
    }
    stack().trace("program end");
    loop().quit(0);
}

template <class Forward, class Back> void MainForm::spin(Forward forward, Back back)
{
    loop().doEvents();
    setMousePointer(99);
    platform::Cursor& cursor = m_cabinet.platform.cursor;
    currentCursor = cursor.position();
    if (currentCursor.x > lastCursor.x) {
        lastCursor = currentCursor;
        forward();
    }
    if (currentCursor.x < lastCursor.x) {
        lastCursor = currentCursor;
        back();
    }
    // The pointer jumps to the far side before it reaches an edge, so the mouse can go on turning one
    // way without end. Both jumps keep the reading from before the jump, so the next tick takes the
    // jump itself for one step the other way.
    const int w = runtime::twipsToPixels(width());
    if (w - 30 <= currentCursor.x) {
        cursor.setPosition(31, currentCursor.y);
        lastCursor = currentCursor;
    }
    if (currentCursor.x < 31) {
        cursor.setPosition(w - 31, currentCursor.y);
        lastCursor = currentCursor;
    }
}

void MainForm::InputCheck()
{
    spin([this] { nav.gNextPage(); }, [this] { nav.gPrevPage(); });
}

void MainForm::InputCheck2()
{
    spin([this] { timdown_Timer(); }, [this] { timUp_Timer(); });
}

} // namespace ombrel::startup
