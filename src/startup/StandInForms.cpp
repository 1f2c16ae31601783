// StandInForms: the plain forms that hold the place of the browser's other screens.
#include "startup/StandInForms.h"

#include "runtime/FormStack.h"
#include "startup/Cabinet.h"
#include "startup/MainForm.h"

#include <memory>

namespace ombrel::startup {

namespace {

constexpr int kEscape = 27;
// The menu and the banner are small panels in the middle of the screen.
constexpr double kPanelWidth = 4104;
constexpr double kMenuHeight = 2772;
constexpr double kMuteHeight = 2796;
constexpr int kMuteShownMs = 800;

MainForm* mainForm(runtime::FormStack& stack)
{
    return dynamic_cast<MainForm*>(stack.existing("Main"));
}

} // namespace

StandInForm::StandInForm(runtime::FormStack& stack, Cabinet& cabinet, std::string name)
    : Form(stack, std::move(name))
    , m_cabinet(cabinet)
{
    setBackColor(0);
    if (this->name() == "frmMute")
        m_timexit = &addTimer("timexit", kMuteShownMs, false, [this] { leave(); });
}

void StandInForm::Form_Load()
{
    MainForm* main = mainForm(stack());
    if (name() == "Info" || name() == "ScreenSav") {
        // Over the browser, exactly as large.
        if (main)
            move(0, 0, main->width(), main->height());
        // The saver and the full view take the browser's place.
        if (name() == "ScreenSav" && main)
            main->hide();
        return;
    }
    const double height = name() == "frmMute" ? kMuteHeight : kMenuHeight;
    move((stack().screenWidth() - kPanelWidth) / 2, (stack().screenHeight() - height) / 2, kPanelWidth,
        height);
    if (m_timexit)
        m_timexit->setEnabled(true);
}

void StandInForm::Form_Activate()
{
    // The browser's deactivation has just armed its watch for a game's exit key; no game runs.
    if (MainForm* main = mainForm(stack()))
        main->timWfExit.setEnabled(false);
}

void StandInForm::Form_KeyDown(int keyCode, int)
{
    if (keyCode == kEscape)
        leave();
}

void StandInForm::leave()
{
    MainForm* main = mainForm(stack());
    const bool saver = name() == "ScreenSav";
    if (m_timexit) {
        m_timexit->setEnabled(false);
        if (main)
            main->setEnabled(true);
    }
    if (saver && main) {
        // Back to the browser on the same row, with the countdown starting afresh.
        auto& run = m_cabinet.run;
        run.saverAuto = true;
        main->timScr.setInterval(1000);
        main->timScr.setEnabled(true);
        run.saverCount = m_cabinet.saved.saverDelay;
        main->show();
        show();
    }
    if (main)
        main->setFocus();
    unload();
    if (runtime::Form* blanker = stack().existing("blanker"); saver && blanker)
        blanker->hide();
}

void defineStandInForms(runtime::FormStack& forms, Cabinet& cabinet)
{
    for (const char* name : { "Info", "frmMenu", "ScreenSav", "frmMute" }) {
        forms.define(name, [&cabinet, name](runtime::FormStack& stack) {
            return std::make_unique<StandInForm>(stack, cabinet, name);
        });
    }
}

} // namespace ombrel::startup
