// ErrorBoxForm: the last words of a program that ends on an error it cannot get past.
#pragma once

#include "runtime/Form.h"

#include <string>

namespace ombrel::startup {

// A black screen with the error's text, in the place of the system's error box: a cabinet has no
// mouse for an OK button, so any key, a click or ten seconds end the program.
class ErrorBoxForm : public runtime::Form
{
public:
    explicit ErrorBoxForm(runtime::FormStack& stack);

    // Shows text over everything else and ends the program with exitCode when it is dismissed.
    void showError(const std::string& text, int exitCode);

    void Form_Activate() override;
    void Form_KeyDown(int keyCode, int shift) override;
    void Form_Click() override;

private:
    void end();

    runtime::Timer& m_timend;
    int m_exitCode = 1;
};

} // namespace ombrel::startup
