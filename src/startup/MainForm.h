// MainForm: the browser form. It owns the controls, the timers that drive browsing, and the handlers
// that bring it up (the boot sequence) and follow it in and out of the foreground.
#pragma once

#include "browser/FormResize.h"
#include "browser/ListStrip.h"
#include "browser/MainControls.h"
#include "browser/ReadAhead.h"
#include "catalogue/Navigation.h"
#include "catalogue/RomScan.h"
#include "platform/Cursor.h"
#include "runtime/Form.h"
#include "runtime/controls/MediaView.h"

namespace ombrel::launch {
struct LaunchContext;
}

namespace ombrel::startup {

struct Cabinet;

class MainForm : public runtime::Form {
public:
    MainForm(runtime::FormStack& stack, Cabinet& cabinet);

    browser::MainControls c;
    catalogue::Navigator nav;
    catalogue::RomScan scan; // refreshAll: the REFRESH command, and the first run
    browser::StripLayout strip;
    browser::clsFormResize scaler; // spreads the skin's layout over the form's size during the boot
    browser::ReadAhead readAhead; // told the way of each step; wishes for the next pictures after cabRefresh
    bool scaleOn = false;
    int highStep = 0;

    runtime::Timer& Timer1;
    runtime::Timer& timScr;
    runtime::Timer& timjoy;
    runtime::Timer& timhigh;
    runtime::Timer& timWfExit;
    runtime::Timer& timRefreshit;

    // The keyboard, the repeat of held keys, the saver countdown and the end of the program
    // (MainKeys.cpp).
    runtime::MediaView& mpFX; // sound effects: the selection's click, a game's start, goodbye
    runtime::Timer& timUp;
    runtime::Timer& timdown;
    runtime::Timer& timleft;
    runtime::Timer& timright;
    runtime::Timer& timNp;
    runtime::Timer& timPp;
    runtime::Timer& timfx;
    runtime::Timer& timscroller;
    runtime::Timer& timscroller2;
    platform::CursorPos lastCursor; // the mouse spinner's previous and current readings, screen pixels
    platform::CursorPos currentCursor;

    // Starting a game and getting the screen back (MainLaunch.cpp).
    runtime::Timer& timkey;
    runtime::Timer& timLock;
    runtime::Timer& timfullscreen;
    runtime::Timer& timescape;
    bool keysSent = false; // the first keys of the current launch have gone out

    void Form_Load() override;
    void Form_Resize() override;
    void Form_Activate() override;
    void Form_Deactivate() override;
    void Form_GotFocus() override;
    void Form_LostFocus() override;
    void Form_Click() override;
    void Form_MouseMove(int button, int shift, double x, double y) override;

    void Form_KeyDown(int keyCode, int shift) override;
    void Form_KeyUp(int keyCode, int shift) override;
    // One step each; the joystick and the mouse spinner call the first four directly.
    void timUp_Timer();
    void timdown_Timer();
    void timleft_Timer();
    void timright_Timer();
    void timNp_Timer();
    void timPp_Timer();
    void timScr_Timer();
    void timfx_Timer();
    void setSRate();
    void toggleMute();
    void startSaverNow();
    // Saves the key map and the saved state, says goodbye, and lets timfx end the program.
    void exitCommand();
    // Stores the selection and the current path in the saved state, then writes ombrel.cfg.
    void SaveCfg();
    void InputCheck();
    void InputCheck2();
    // The previews and the click, for the current selection; then the wishes for the next steps.
    void cabRefresh();

    // The joystick (MainJoystick.cpp).
    void timjoy_Timer();
    // What the word bound to control theindex (0 to 15) does, then the saver countdown starts afresh.
    void shootinput(int theindex);
    // Looks up which button leaves a running game; called after each launch.
    void checkExitbut();
    // Reads the stick into the shared reading and says whether the exit button is the one button held.
    bool exitButtonDown();

    // Starting a game (MainLaunch.cpp). SELECT comes in through List1_DblClick, which plays the start
    // sound first; a double click on the strip starts the game at once through runEmu.
    void List1_DblClick();
    void runEmu();
    void timkey_Timer();
    void timfullscreen_Timer();
    void timescape_Timer();
    void timWfExit_Timer();
    void timLock_Timer();

    // The text strip (MainStrip.cpp): the pulse of the middle row, and the mouse on the rows: a click
    // moves the selection to the row's game, a double click starts it, a held button scrolls.
    void timhigh_Timer();
    void ll_Click(int index);
    void ll_DblClick(int index);
    void ll_MouseDown(int index, int button, int shift, double x, double y);
    void ll_MouseUp(int index, int button, int shift, double x, double y);
    // The picture strip (MainStrip.cpp): its fill, and the mouse on the cells: a click brings the cell's
    // game to the middle, a double click starts the selection, a right click starts or stops the scrolling.
    void shootScreens(int path, const std::string& fallback);
    void xlist_Click(int index);
    void xlist_DblClick(int index);
    void xlist_MouseDown(int index, int button, int shift, double x, double y);

private:
    void Timer1_Timer(); // the boot sequence
    void timRefreshit_Timer();
    void frmMenuFocus();
    void wireKeys();
    void wireLaunch();
    void wireStrip();
    // The end of the start sound starts the game.
    void mpFX_PlayStateChange();
    launch::LaunchContext launchContext();
    // Opens the picture of a preview panel full screen.
    void fullView(runtime::PictureControl& panel);
    // The spinner: a sideways move of the mouse since the last tick steps one way or the other.
    template <class Forward, class Back> void spin(Forward forward, Back back);

    Cabinet& m_cabinet;
};

} // namespace ombrel::startup
