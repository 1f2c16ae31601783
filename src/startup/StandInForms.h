// StandInForms: the forms that the browser opens over itself (Info, frmMenu, ScreenSav, frmMute), as
// plain black forms of their size and place until each gets its own screen. Esc leaves each of them.
#pragma once

#include "runtime/Form.h"

#include <string>

namespace ombrel::runtime {
class FormStack;
}

namespace ombrel::startup {

struct Cabinet;

// A black form that takes the keyboard from the browser while it is up and gives it back on Esc, the
// way the screen it stands for does on leaving.
class StandInForm : public runtime::Form
{
public:
    StandInForm(runtime::FormStack& stack, Cabinet& cabinet, std::string name);

    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyDown(int keyCode, int shift) override;

private:
    void leave();

    Cabinet& m_cabinet;
    runtime::Timer* m_timexit = nullptr; // the mute banner goes away by itself
};

// Says how to make each of the stand-in forms.
void defineStandInForms(runtime::FormStack& forms, Cabinet& cabinet);

} // namespace ombrel::startup
