// MainForm: the browser form. It owns the controls, the timers that drive browsing, and the handlers
// that bring it up (the boot sequence) and follow it in and out of the foreground.
#pragma once

#include "browser/ListStrip.h"
#include "browser/MainControls.h"
#include "catalogue/Navigation.h"
#include "runtime/Form.h"

namespace ombrel::startup {

struct Cabinet;

class MainForm : public runtime::Form {
public:
    MainForm(runtime::FormStack& stack, Cabinet& cabinet);

    browser::MainControls c;
    catalogue::Navigator nav;
    browser::StripLayout strip;
    bool scaleOn = false;
    int highStep = 0;

    runtime::Timer& Timer1;
    runtime::Timer& timScr;
    runtime::Timer& timjoy;
    runtime::Timer& timhigh;
    runtime::Timer& timWfExit;
    runtime::Timer& timRefreshit;

    void Form_Load() override;
    void Form_Resize() override;
    void Form_Activate() override;
    void Form_Deactivate() override;
    void Form_GotFocus() override;
    void Form_LostFocus() override;
    void Form_Click() override;
    void Form_MouseMove(int button, int shift, double x, double y) override;

private:
    void Timer1_Timer(); // the boot sequence
    void timRefreshit_Timer();
    void frmMenuFocus();
    // One step of the boot: a step that fails is passed over and the next one runs.
    template <class F> void step(F&& f);

    Cabinet& m_cabinet;
};

} // namespace ombrel::startup
