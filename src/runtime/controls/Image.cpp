// Image: a logo picture.
#include "runtime/controls/Image.h"

#include "runtime/Form.h"
#include "runtime/FormStack.h"

namespace ombrel::runtime {

Image::Image(Form& form, std::string name, int index)
    : Control(form, std::move(name), index)
{
}

bool Image::setPicture(const std::string& path)
{
    if (path.empty()) {
        m_picture.clear();
        m_size = {};
        changed();
        return true;
    }
    auto picture = form().stack().loadPicture(path);
    if (!picture)
        return false;
    m_picture = picture->path;
    m_size = picture->size;
    if (!m_stretch) {
        setWidth(pixelsToTwips(m_size.w));
        setHeight(pixelsToTwips(m_size.h));
    }
    changed();
    return true;
}

void Image::setStretch(bool on)
{
    m_stretch = on;
    if (!on && !m_picture.empty()) {
        setWidth(pixelsToTwips(m_size.w));
        setHeight(pixelsToTwips(m_size.h));
    }
    changed();
}

void Image::paint(DrawList& out, int originX, int originY, const PixelRect& clip) const
{
    if (m_picture.empty())
        return;
    DrawCommand picture;
    picture.kind = DrawCommand::Kind::Image;
    picture.rect = pixelRect(originX, originY);
    picture.clip = clip;
    picture.path = m_picture;
    picture.fit = m_stretch ? ImageFit::Stretch : ImageFit::Natural;
    out.push_back(std::move(picture));
}

void Image::copyFrom(const Control& other)
{
    Control::copyFrom(other);
    if (auto* image = dynamic_cast<const Image*>(&other)) {
        m_picture = image->m_picture;
        m_size = image->m_size;
        m_stretch = image->m_stretch;
    }
}

} // namespace ombrel::runtime
