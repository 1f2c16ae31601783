// BlankerForm: the start-up form. It reads the settings, deals with the display mode, plays the intro
// film over a black screen, and covers the screen while the browser is built.
#pragma once

#include "runtime/Form.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/MediaView.h"

namespace ombrel::startup {

struct Cabinet;

class BlankerForm : public runtime::Form {
public:
    BlankerForm(runtime::FormStack& stack, Cabinet& cabinet);

    runtime::MediaView& mpIntro;
    runtime::Timer& timresize;
    runtime::Timer& timexit;
    runtime::Timer& timjoy;

    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyDown(int keyCode, int shift) override;
    void Form_Click() override;

private:
    void timresize_Timer();
    void timexit_Timer();
    void timjoy_Timer();
    void mpIntro_PlayStateChange(int oldState, int newState);
    // The settings could not be read at start: say so on the screen and on standard error, then end.
    // A key, a click or the time shown ends it.
    void failStart(const std::string& message);
    void endAfterFailure();

    Cabinet& m_cabinet;
    runtime::Label* m_message = nullptr;
    bool m_failed = false;
};

// The black backdrop behind every form.
class BackgroundForm : public runtime::Form {
public:
    BackgroundForm(runtime::FormStack& stack);
    void Form_GotFocus() override;
    void Form_Click() override;
    void Form_KeyDown(int keyCode, int shift) override;
};

} // namespace ombrel::startup
