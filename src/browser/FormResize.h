// FormResize: clsFormResize, which keeps the controls of one form in proportion to the form's size.
#pragma once

#include <cstdint>
#include <vector>

namespace ombrel::runtime {
class Control;
class Form;
} // namespace ombrel::runtime

namespace ombrel::browser {

// Spreads a layout written for one size of a form over whatever size the form takes. It knows nothing
// of the form it works on: it walks the form's controls and reaches their properties by name, so a
// control kind that lacks a property is simply passed over for that property.
//
// A control's Tag may say what is scaled: taken in upper case, a tag beginning with "@" scales Top,
// Height, Left and Width for each of the letters T, H, L and W it holds anywhere; "@" alone holds the
// control still. An empty tag, or one without the "@", scales all four.
class clsFormResize
{
public:
    runtime::Form* SourceForm() const { return m_sourceForm; }
    // Set once by the owner after creating the scaler.
    void setSourceForm(runtime::Form& form);

    // Scales every saved control to the form's present size. The first call only takes stock of the
    // layout; a minimised form is left alone.
    void ScaleControls();
    // Sizes the form to percent of the screen.
    void SizeFormToScreen(int percent);
    // Takes stock of the layout anew: the present positions become the ones scaled from.
    void ReInitialize();

private:
    // One control as it stood when the proportions were saved; for a line, its two ends.
    struct ctlRect
    {
        runtime::Control* ctl = nullptr;
        int32_t left = 0; // X1 of a line
        int32_t top = 0; // Y1
        int32_t width = 0; // X2
        int32_t height = 0; // Y2
        bool line = false;
    };

    void SaveProportions();
    void SaveFormSize();
    void SaveControls();
    void scaleOne(const ctlRect& saved, double ratioX, double ratioY);
    void keepTextReadable(runtime::Control& control);

    runtime::Form* m_sourceForm = nullptr;
    int32_t m_savedWidth = 0;
    int32_t m_savedHeight = 0;
    std::vector<ctlRect> m_savedControls;
    bool m_firstScale = true;
};

} // namespace ombrel::browser
