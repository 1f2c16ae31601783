// ErrorBoxForm: the error's text on a black screen until it is dismissed.
#include "startup/ErrorBoxForm.h"

#include "runtime/EventLoop.h"
#include "runtime/FormStack.h"
#include "runtime/controls/Label.h"
#include "startup/MainForm.h"

#include <algorithm>

namespace ombrel::startup {

namespace {
constexpr int kShownMs = 10000;
constexpr uint32_t kWhite = 0xFFFFFF;
}

ErrorBoxForm::ErrorBoxForm(runtime::FormStack& stack)
    : Form(stack, "ErrorBox")
    , m_timend(addTimer("timend", kShownMs, false, [this] { end(); }))
{
    setCaption("Ombrel");
    setBackColor(0);
    setMaximised(true);
}

void ErrorBoxForm::showError(const std::string& text, int exitCode)
{
    m_exitCode = exitCode;
    auto* label = dynamic_cast<runtime::Label*>(find("lblError"));
    if (!label) {
        label = &add<runtime::Label>("lblError");
        label->setBackStyle(0);
        label->setForeColor(kWhite);
        label->setFontSize(14);
        label->setWordWrap(true);
    }
    label->move(600, 600, std::max(1500.0, width() - 1200), 3000);
    label->setCaption(text);
    show();
    setFocus();
    m_timend.setEnabled(true);
}

void ErrorBoxForm::Form_Activate()
{
    // No game runs: the browser's watch for a game's exit key, armed as it lost the focus, stops.
    if (auto* main = dynamic_cast<MainForm*>(stack().existing("Main")))
        main->timWfExit.setEnabled(false);
}

void ErrorBoxForm::Form_KeyDown(int, int)
{
    end();
}

void ErrorBoxForm::Form_Click()
{
    end();
}

void ErrorBoxForm::end()
{
    if (loop().quitting())
        return;
    m_timend.setEnabled(false);
    stack().trace("program end");
    loop().quit(m_exitCode);
}

} // namespace ombrel::startup
