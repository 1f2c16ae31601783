// Image: a picture shown at its own size (the box then takes the picture's size) or stretched over
// the box: the logos.
#pragma once

#include "runtime/Control.h"

#include <string>

namespace ombrel::runtime {

class Image : public Control {
public:
    Image(Form& form, std::string name, int index = -1);

    const std::string& picture() const { return m_picture; }
    // Loads a picture; false when it cannot be shown, and the old one stays. "" clears it.
    bool setPicture(const std::string& path);
    bool stretch() const { return m_stretch; }
    void setStretch(bool on);

    void paint(DrawList& out, int originX, int originY, const PixelRect& clip) const override;
    void copyFrom(const Control& other) override;

private:
    std::string m_picture;
    PixelSize m_size;
    bool m_stretch = false;
};

} // namespace ombrel::runtime
