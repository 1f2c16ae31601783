// PictureControl: loading and painting a fitted picture.
#include "runtime/controls/PictureControl.h"

#include "runtime/Form.h"
#include "runtime/FormStack.h"

namespace ombrel::runtime {

PictureControl::PictureControl(Form& form, std::string name, int index)
    : Control(form, std::move(name), index)
{
}

bool PictureControl::setFileName(const std::string& path)
{
    auto picture = form().stack().loadPicture(path);
    if (!picture)
        return false;
    m_fileName = picture->path;
    m_size = picture->size;
    changed();
    return true;
}

void PictureControl::clear()
{
    m_fileName.clear();
    m_size = {};
    changed();
}

void PictureControl::setBackColor(uint32_t colour)
{
    m_backColor = colour & 0xFFFFFF;
    changed();
}

double PictureControl::property(int dispatchId) const
{
    auto it = m_properties.find(dispatchId);
    return it == m_properties.end() ? 0 : it->second;
}

void PictureControl::paint(DrawList& out, int originX, int originY, const PixelRect& clip) const
{
    PixelRect box = pixelRect(originX, originY);
    DrawCommand fill;
    fill.kind = DrawCommand::Kind::Fill;
    fill.rect = box;
    fill.clip = clip;
    fill.colour = m_backColor;
    out.push_back(fill);
    if (m_fileName.empty())
        return;
    DrawCommand picture;
    picture.kind = DrawCommand::Kind::Image;
    picture.rect = box;
    picture.clip = clip;
    picture.path = m_fileName;
    picture.fit = ImageFit::Contain;
    out.push_back(std::move(picture));
}

void PictureControl::copyFrom(const Control& other)
{
    Control::copyFrom(other);
    if (auto* picture = dynamic_cast<const PictureControl*>(&other)) {
        m_fileName = picture->m_fileName;
        m_size = picture->m_size;
        m_backColor = picture->m_backColor;
        m_properties = picture->m_properties;
    }
}

} // namespace ombrel::runtime
