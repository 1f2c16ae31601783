// PictureControl: the preview picture control. Loads a picture by file name and shows it fitted into
// its box with its proportions kept, centred, BackColor around it. A failed load keeps the old picture.
#pragma once

#include "runtime/Control.h"

#include <cstdint>
#include <map>
#include <string>

namespace ombrel::runtime {

class PictureControl : public Control {
public:
    PictureControl(Form& form, std::string name, int index = -1);

    // The file last loaded with success ("" when none).
    const std::string& fileName() const { return m_fileName; }
    // Loads the picture; false (and the old picture kept) when the file is missing or not a picture.
    bool setFileName(const std::string& path);
    // Drops the picture.
    void clear();
    uint32_t backColor() const { return m_backColor; }
    void setBackColor(uint32_t colour);
    PixelSize pictureSize() const { return m_size; }

    // Settings the original control took by number (display options); kept so they read back.
    void setProperty(int dispatchId, double value) { m_properties[dispatchId] = value; }
    double property(int dispatchId) const;

    void paint(DrawList& out, int originX, int originY, const PixelRect& clip) const override;
    void copyFrom(const Control& other) override;

private:
    std::string m_fileName;
    PixelSize m_size;
    uint32_t m_backColor = 0;
    std::map<int, double> m_properties;
};

} // namespace ombrel::runtime
