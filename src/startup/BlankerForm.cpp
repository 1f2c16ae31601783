// BlankerForm and BackgroundForm: the start of the program and the black backdrop.
#include "startup/BlankerForm.h"

#include "config/SettingsCheck.h"
#include "config/SettingsFile.h"
#include "core/PassOver.h"
#include "launch/ReturnFromGame.h"
#include "platform/MediaPlayer.h"
#include "runtime/EventLoop.h"
#include "runtime/FormStack.h"
#include "startup/Cabinet.h"
#include "system/DisplayModes.h"

#include <algorithm>
#include <iostream>

namespace ombrel::startup {

namespace {
    constexpr int kFailureShownMs = 5000;
}

BlankerForm::BlankerForm(runtime::FormStack& stack, Cabinet& cabinet)
    : Form(stack, "blanker")
    , mpIntro(add<runtime::MediaView>("mpIntro", cabinet.platform.media.create("mpIntro", platform::MediaKind::Film)))
    , timresize(addTimer("timresize", 1, true, [this] { timresize_Timer(); }))
    , timexit(addTimer("timexit", 2000, false, [this] { timexit_Timer(); }))
    , timjoy(addTimer("timjoy", 15, true, [this] { timjoy_Timer(); }))
    , m_cabinet(cabinet)
{
    setCaption("Ombrel");
    setBackColor(0);
    setMaximised(true);
    mpIntro.player().onPlayStateChange = [this](int oldState, int newState) { mpIntro_PlayStateChange(oldState, newState); };
    mpIntro.onClick = [this] { mpIntro.player().stop(); };
    // Once the film is over and let go, a button has nothing left to stop: the poll stays enabled for
    // the life of the form, but a sleeping cabinet need not wake up 66 times a second for it.
    timjoy.idleWhen = [this] {
        const platform::MediaPlayer& film = mpIntro.player();
        return film.fileName().empty() && film.playState() == platform::kStopped;
    };
}

void BlankerForm::Form_Load()
{
    auto& run = m_cabinet.run;
    auto& settings = m_cabinet.settings;
    if (!run.resDone) {
        auto desk = m_cabinet.platform.display.desktopSize();
        run.deskW = static_cast<float>(desk.w);
        run.deskH = static_cast<float>(desk.h);
        try {
            config::OpenINI(m_cabinet.home, settings);
        } catch (const config::SettingsError& error) {
            // The line where the reading broke is often far from the mistake; name the mistake.
            std::string problem = config::firstSettingsProblem(m_cabinet.home, m_cabinet.platform.files);
            failStart(problem.empty() ? error.what() : problem);
            return;
        }
        if (settings.scrW > 0 && settings.scrW != run.deskW && settings.scrH > 0)
            system::changeRes(m_cabinet.platform.display, settings.scrW, settings.scrH, settings.frontBits,
                settings.frontFreq);
        else {
            settings.scrW = run.deskW;
            settings.scrH = run.deskH;
        }
        run.resDone = true;
    }
    // Park the pointer past the top right corner: the form's width in twips, taken as pixels.
    m_cabinet.platform.cursor.setPosition(static_cast<int>(width()), 0);
    // Read once already; a second failure is passed over.
    core::passOver(failures(), [&] { config::OpenINI(m_cabinet.home, settings); });
    // The picture goes to the TV output for the whole run.
    if (settings.tvOut)
        launch::startTv(m_cabinet.platform.keys);
}

void BlankerForm::failStart(const std::string& message)
{
    m_failed = true;
    std::cerr << "ombrel: " << message << " (ombrel --check gives the whole report)\n";
    m_cabinet.forms.trace("error " + message);
    // Nothing may lead on to the browser now: no film, no stick, and (see Form_Activate) no backdrop,
    // whose click or key would show it.
    timresize.setEnabled(false);
    timjoy.setEnabled(false);
    mpIntro.setVisible(false);
    auto& label = add<runtime::Label>("lblError");
    label.setBackStyle(0);
    label.setForeColor(0xFFFFFF);
    label.setFontSize(14);
    label.setWordWrap(true);
    label.move(600, 600, std::max(1500.0, width() - 1200), 3000);
    label.setCaption(message + "\r\n\r\nOmbrel cannot start until the file is mended.\r\n"
        + "ombrel --check lists every problem of the file.");
    addTimer("timfail", kFailureShownMs, true, [this] { endAfterFailure(); });
}

void BlankerForm::endAfterFailure()
{
    if (loop().quitting())
        return;
    stack().trace("program end");
    loop().quit(1);
}

void BlankerForm::Form_Activate()
{
    if (m_failed)
        return;
    Form& background = stack().form("background");
    if (!background.visible()) {
        background.show();
        background.zOrder(1);
    }
}

void BlankerForm::Form_KeyDown(int, int)
{
    if (m_failed) {
        endAfterFailure();
        return;
    }
    mpIntro.player().stop();
}

void BlankerForm::Form_Click()
{
    if (m_failed)
        endAfterFailure();
}

void BlankerForm::timresize_Timer()
{
    setFocus();
    timresize.setEnabled(false);
    mpIntro.move(0, 0, width(), height());
    auto& player = mpIntro.player();
    player.setFileName(m_cabinet.homeFile("\\intro.mpeg"));
    if (player.fileName().empty()) {
        timexit.setEnabled(true);
        stack().form("Main").show();
        show();
    } else {
        player.play();
    }
}

void BlankerForm::mpIntro_PlayStateChange(int oldState, int newState)
{
    if (oldState != platform::kPlaying || newState != platform::kStopped)
        return;
    Form& main = stack().form("Main");
    main.load();
    main.show();
    show();
    mpIntro.setVisible(false);
}

void BlankerForm::timjoy_Timer()
{
    platform::JoyInfo info;
    if (m_cabinet.platform.joystick.read(info) && info.buttons > 0)
        mpIntro.player().stop();
}

void BlankerForm::timexit_Timer()
{
    Form& main = stack().form("Main");
    main.show();
    Form* background = stack().existing("background");
    if (!main.visible() && !(background && background->visible()))
        stack().form("background").show();
    timexit.setEnabled(false);
    main.setFocus();
    hide();
}

BackgroundForm::BackgroundForm(runtime::FormStack& stack)
    : Form(stack, "background")
{
    setCaption("Background");
    setBackColor(0);
    setMaximised(true);
}

void BackgroundForm::Form_GotFocus() { zOrder(1); }

void BackgroundForm::Form_Click() { stack().form("Main").show(); }

void BackgroundForm::Form_KeyDown(int, int) { stack().form("Main").show(); }

} // namespace ombrel::startup
