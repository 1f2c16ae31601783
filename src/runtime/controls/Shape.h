// Shape: a rectangle outline (the selection frame), and a picture box: a box filled with a colour.
#pragma once

#include "runtime/Control.h"

#include <cstdint>
#include <string>

namespace ombrel::runtime {

class Shape : public Control {
public:
    Shape(Form& form, std::string name, int index = -1);

    uint32_t borderColor() const { return m_borderColor; }
    void setBorderColor(uint32_t colour);
    int borderWidth() const { return m_borderWidth; }
    void setBorderWidth(int pixels);
    // 0 transparent inside, 1 filled with FillColor.
    int fillStyle() const { return m_fillStyle; }
    void setFillStyle(int style);
    uint32_t fillColor() const { return m_fillColor; }
    void setFillColor(uint32_t colour);

    void paint(DrawList& out, int originX, int originY, const PixelRect& clip) const override;
    void copyFrom(const Control& other) override;
    // A shape never takes the mouse: clicks go through to what lies under it.
    bool hitTest(int, int, int, int) const override { return false; }

private:
    uint32_t m_borderColor = 0;
    int m_borderWidth = 1;
    int m_fillStyle = 0;
    uint32_t m_fillColor = 0;
};

class PictureBox : public Control {
public:
    PictureBox(Form& form, std::string name, int index = -1);

    uint32_t backColor() const { return m_backColor; }
    void setBackColor(uint32_t colour);

    void paint(DrawList& out, int originX, int originY, const PixelRect& clip) const override;
    void copyFrom(const Control& other) override;

private:
    uint32_t m_backColor = 0xC0C0C0;
};

} // namespace ombrel::runtime
