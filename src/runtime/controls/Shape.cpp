// Shape and PictureBox: outlines and colour fills.
#include "runtime/controls/Shape.h"

#include <algorithm>

namespace ombrel::runtime {

Shape::Shape(Form& form, std::string name, int index)
    : Control(form, std::move(name), index)
{
}

void Shape::setBorderColor(uint32_t colour)
{
    m_borderColor = colour & 0xFFFFFF;
    changed();
}

void Shape::setBorderWidth(int pixels)
{
    m_borderWidth = std::clamp(pixels, 0, 8192);
    changed();
}

void Shape::setFillStyle(int style)
{
    m_fillStyle = style == 0 ? 0 : 1;
    changed();
}

void Shape::setFillColor(uint32_t colour)
{
    m_fillColor = colour & 0xFFFFFF;
    changed();
}

void Shape::paint(DrawList& out, int originX, int originY, const PixelRect& clip) const
{
    PixelRect box = pixelRect(originX, originY);
    if (m_fillStyle == 1) {
        DrawCommand fill;
        fill.kind = DrawCommand::Kind::Fill;
        fill.rect = box;
        fill.clip = clip;
        fill.colour = m_fillColor;
        out.push_back(fill);
    }
    if (m_borderWidth <= 0)
        return;
    DrawCommand frame;
    frame.kind = DrawCommand::Kind::Frame;
    frame.rect = box;
    frame.clip = clip;
    frame.colour = m_borderColor;
    frame.lineWidth = m_borderWidth;
    out.push_back(frame);
}

void Shape::copyFrom(const Control& other)
{
    Control::copyFrom(other);
    if (auto* shape = dynamic_cast<const Shape*>(&other)) {
        m_borderColor = shape->m_borderColor;
        m_borderWidth = shape->m_borderWidth;
        m_fillStyle = shape->m_fillStyle;
        m_fillColor = shape->m_fillColor;
    }
}

PictureBox::PictureBox(Form& form, std::string name, int index)
    : Control(form, std::move(name), index)
{
}

void PictureBox::setBackColor(uint32_t colour)
{
    m_backColor = colour & 0xFFFFFF;
    changed();
}

void PictureBox::paint(DrawList& out, int originX, int originY, const PixelRect& clip) const
{
    DrawCommand fill;
    fill.kind = DrawCommand::Kind::Fill;
    fill.rect = pixelRect(originX, originY);
    fill.clip = clip;
    fill.colour = m_backColor;
    out.push_back(fill);
}

void PictureBox::copyFrom(const Control& other)
{
    Control::copyFrom(other);
    if (auto* box = dynamic_cast<const PictureBox*>(&other))
        m_backColor = box->m_backColor;
}

} // namespace ombrel::runtime
