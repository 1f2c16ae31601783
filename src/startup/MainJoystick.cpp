// MainJoystick: the browser form's joystick: the poll of stick 0, what the words of joystick.ini make
// its controls do, and the exit button that leaves a running game.
//
// There is no edge detection: a control held down fires again on every tick of the poll, so a held
// button repeats at the poll's rate (three times the scroll rate), and a held SELECT starts the game
// again on each tick. A stick direction makes one step per tick rather than enabling a repeat timer.
#include "startup/MainForm.h"

#include "input/JoystickMap.h"
#include "core/PassOver.h"
#include "runtime/FormStack.h"
#include "startup/Cabinet.h"

#include <exception>

namespace ombrel::startup {


void MainForm::timjoy_Timer()
{
    // Without a stick the poll does nothing at all, not even to the countdown.
    if (!m_cabinet.platform.joystick.read(m_cabinet.joy))
        return;
    const platform::JoyInfo reading = m_cabinet.joy;
    for (int control : input::stickControls(reading))
        shootinput(control);
    // Any button stops the countdown. Two buttons held together fire no command, so nothing starts
    // the countdown again until the next input.
    if (reading.buttons >= 1)
        timScr.setEnabled(false);
    if (std::optional<int> button = input::buttonControl(reading.buttons))
        shootinput(*button);
}

void MainForm::shootinput(int theindex)
{
    using input::LogicalCommand;
    std::optional<LogicalCommand> command;
    if (theindex >= 0 && theindex < input::kJoyControls)
        command = input::joyCommand(m_cabinet.joyMap.joyKeys[static_cast<size_t>(theindex)]);
    if (command) {
        core::passOver(failures(), [&] {
            switch (*command) {
            case LogicalCommand::Select:
                timScr.setEnabled(false);
                if (c.List1.onDblClick)
                    c.List1.onDblClick();
                break;
            // The stick moves by single steps, each with its redraw, as a repeat timer's tick does.
            case LogicalCommand::Up:
                timUp_Timer();
                break;
            case LogicalCommand::Down:
                timdown_Timer();
                break;
            case LogicalCommand::LeftPage:
                timleft_Timer();
                break;
            case LogicalCommand::RightPage:
                timright_Timer();
                break;
            // NOTE: a change of list from the stick does not redraw: the strip and the pictures stay as
            // they were until the next step draws them.
            case LogicalCommand::PrevPath:
                nav.gPrevPath();
                break;
            case LogicalCommand::NextPath:
                nav.gNextPath();
                break;
            case LogicalCommand::Refresh:
                scan.refreshAll();
                break;
            case LogicalCommand::Mute:
                toggleMute();
                break;
            case LogicalCommand::ScreenSaver:
                startSaverNow();
                break;
            case LogicalCommand::Config:
                stack().form("frmMenu").show();
                break;
            case LogicalCommand::Exit:
                exitCommand();
                break;
            case LogicalCommand::Info: // no word reaches it
                break;
            }
        });
    }
    // Every control is a sign of life, one bound to nothing too; this also runs after a game was
    // started, so the countdown goes on behind a game that does not hold the program up.
    timScr.setEnabled(true);
    m_cabinet.run.saverCount = m_cabinet.saved.saverDelay;
}

void MainForm::checkExitbut()
{
    input::checkExitbut(m_cabinet.joyMap);
}

bool MainForm::exitButtonDown()
{
    // A failed read leaves the last reading in place, and that reading is what counts.
    m_cabinet.platform.joystick.read(m_cabinet.joy);
    const int16_t mask = m_cabinet.joyMap.exitButton;
    // Only the exit button held alone counts: with another button together it is no exit.
    return mask != 0 && m_cabinet.joy.buttons == static_cast<uint32_t>(static_cast<uint16_t>(mask));
}

} // namespace ombrel::startup
