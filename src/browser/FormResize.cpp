// FormResize: scaling a form's controls from the positions saved for one size of the form.
#include "browser/FormResize.h"

#include "core/VbMath.h"
#include "runtime/Control.h"
#include "runtime/Form.h"
#include "runtime/FormStack.h"
#include "runtime/Geometry.h"
#include "platform/Renderer.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

namespace ombrel::browser {

namespace {

// Which of a control's four values its tag lets scale.
struct Sides
{
    bool top = true;
    bool height = true;
    bool left = true;
    bool width = true;
};

Sides sidesOf(std::string_view tag)
{
    if (tag.empty() || tag.front() != '@')
        return {};
    auto has = [tag](char letter) {
        for (char c : tag)
            if (c == letter || c == letter - 'A' + 'a')
                return true;
        return false;
    };
    return { has('T'), has('H'), has('L'), has('W') };
}

std::optional<double> numberOf(const runtime::Control& control, std::string_view name)
{
    auto value = control.propertyByName(name);
    if (const double* number = value ? std::get_if<double>(&*value) : nullptr)
        return *number;
    return std::nullopt;
}

std::optional<std::string> textOf(const runtime::Control& control, std::string_view name)
{
    auto value = control.propertyByName(name);
    if (const std::string* text = value ? std::get_if<std::string>(&*value) : nullptr)
        return *text;
    return std::nullopt;
}

// A position kept as a whole number; one the control cannot give, or too large to keep, is 0.
int32_t wholeOf(const runtime::Control& control, std::string_view name)
{
    auto number = numberOf(control, name);
    return number ? core::toLong(*number).value_or(0) : 0;
}

} // namespace

void clsFormResize::setSourceForm(runtime::Form& form)
{
    m_sourceForm = &form;
}

void clsFormResize::ReInitialize()
{
    SaveProportions();
}

void clsFormResize::SaveProportions()
{
    SaveFormSize();
    SaveControls();
}

void clsFormResize::SaveFormSize()
{
    // NOTE: the runtime has no MDI forms, whose outer size would be saved instead.
    m_savedWidth = core::toLong(m_sourceForm->scaleWidth()).value_or(0);
    m_savedHeight = core::toLong(m_sourceForm->scaleHeight()).value_or(0);
}

void clsFormResize::SaveControls()
{
    m_savedControls.clear();
    for (runtime::Control* control : m_sourceForm->controls()) {
        // Only what has a place on the form is scaled; a control that cannot say whether it is
        // visible has none.
        if (!control->propertyByName("Visible"))
            continue;
        ctlRect saved;
        saved.ctl = control;
        saved.line = control->propertyByName("X1").has_value();
        saved.left = wholeOf(*control, saved.line ? "X1" : "Left");
        saved.top = wholeOf(*control, saved.line ? "Y1" : "Top");
        saved.width = wholeOf(*control, saved.line ? "X2" : "Width");
        saved.height = wholeOf(*control, saved.line ? "Y2" : "Height");
        m_savedControls.push_back(saved);
    }
    m_firstScale = false;
}

void clsFormResize::ScaleControls()
{
    if (!m_sourceForm)
        return;
    if (m_firstScale) {
        SaveProportions();
        return;
    }
    if (m_sourceForm->minimised())
        return;
    // NOTE: with no saved size there is nothing to be in proportion to; the scaling ends here.
    if (m_savedWidth == 0 || m_savedHeight == 0)
        return;
    // Always against the saved size, so that going to any size and back lands exactly where it began.
    const double ratioY = m_sourceForm->scaleHeight() / m_savedHeight;
    const double ratioX = m_sourceForm->scaleWidth() / m_savedWidth;
    // A control unloaded since the proportions were saved is not reached any more.
    const auto& present = m_sourceForm->controls();
    const std::unordered_set<const runtime::Control*> loaded(present.begin(), present.end());
    for (const ctlRect& saved : m_savedControls)
        if (loaded.count(saved.ctl))
            scaleOne(saved, ratioX, ratioY);
}

void clsFormResize::scaleOne(const ctlRect& saved, double ratioX, double ratioY)
{
    runtime::Control& control = *saved.ctl;
    const Sides sides = sidesOf(textOf(control, "Tag").value_or(""));
    // A write the control refuses is passed over; the rest of the control is still scaled.
    if (sides.top)
        control.setPropertyByName(saved.line ? "Y1" : "Top", saved.top * ratioY);
    if (sides.height)
        control.setPropertyByName(saved.line ? "Y2" : "Height", saved.height * ratioY);
    if (sides.left)
        control.setPropertyByName(saved.line ? "X1" : "Left", saved.left * ratioX);
    if (sides.width)
        control.setPropertyByName(saved.line ? "X2" : "Width", saved.width * ratioX);
    keepTextReadable(control);
}

void clsFormResize::keepTextReadable(runtime::Control& control)
{
    // Fonts do not scale, so a text box made lower than its text grows back to hold it, measured in the
    // form's font.
    const auto caption = textOf(control, "Caption");
    const auto text = textOf(control, "Text");
    const auto height = numberOf(control, "Height");
    if ((!caption && !text) || !height)
        return;
    const double needed = core::roundHalfEven(m_sourceForm->textHeight(text ? *text : *caption));
    if (needed <= *height)
        return;
    if (caption)
        control.setPropertyByName("Height", m_sourceForm->textHeight(*caption) * 1.2);
    if (text)
        control.setPropertyByName("Height", m_sourceForm->textHeight(*text) * 1.2);
}

void clsFormResize::SizeFormToScreen(int percent)
{
    if (!m_sourceForm)
        return;
    const runtime::PixelSize screen = m_sourceForm->stack().services().renderer.screenSize();
    m_sourceForm->setWidth(core::vbInt(percent / 100.0 * runtime::pixelsToTwips(screen.w)));
    m_sourceForm->setHeight(core::vbInt(percent / 100.0 * runtime::pixelsToTwips(screen.h)));
}

} // namespace ombrel::browser
