// Control: name, box, visibility and z-order shared by every control.
#include "runtime/Control.h"

#include "runtime/Form.h"

namespace ombrel::runtime {

Control::Control(Form& form, std::string name, int index)
    : m_form(form)
    , m_name(std::move(name))
    , m_index(index)
{
}

Control::~Control() = default;

std::string Control::fullName() const
{
    if (m_index < 0)
        return m_name;
    return m_name + "(" + std::to_string(m_index) + ")";
}

void Control::changed() { m_form.changed(); }

void Control::setLeft(double twips)
{
    m_left = twips;
    changed();
}

void Control::setTop(double twips)
{
    m_top = twips;
    changed();
}

void Control::setWidth(double twips)
{
    m_width = twips < 0 ? 0 : twips;
    changed();
}

void Control::setHeight(double twips)
{
    m_height = twips < 0 ? 0 : twips;
    changed();
}

void Control::move(double left, double top, double width, double height)
{
    m_left = left;
    m_top = top;
    m_width = width < 0 ? 0 : width;
    m_height = height < 0 ? 0 : height;
    changed();
}

void Control::setVisible(bool visible)
{
    if (m_visible == visible)
        return;
    m_visible = visible;
    changed();
}

void Control::zOrder(int position)
{
    m_form.zOrderControl(*this, position);
}

PixelRect Control::pixelRect(int originX, int originY) const
{
    return { originX + twipsToPixels(m_left), originY + twipsToPixels(m_top), twipsToPixels(m_width),
        twipsToPixels(m_height) };
}

void Control::copyFrom(const Control& other)
{
    m_left = other.m_left;
    m_top = other.m_top;
    m_width = other.m_width;
    m_height = other.m_height;
    m_enabled = other.m_enabled;
    m_tag = other.m_tag;
    m_visible = false;
    changed();
}

std::optional<PropertyValue> Control::propertyByName(std::string_view name) const
{
    if (name == "Visible")
        return m_visible;
    if (name == "Left")
        return m_left;
    if (name == "Top")
        return m_top;
    if (name == "Width")
        return m_width;
    if (name == "Height")
        return m_height;
    if (name == "Tag")
        return m_tag;
    return std::nullopt;
}

bool Control::setPropertyByName(std::string_view name, const PropertyValue& value)
{
    if (const bool* flag = std::get_if<bool>(&value)) {
        if (name != "Visible")
            return false;
        setVisible(*flag);
        return true;
    }
    if (const std::string* text = std::get_if<std::string>(&value)) {
        if (name != "Tag")
            return false;
        setTag(*text);
        return true;
    }
    const double number = std::get<double>(value);
    if (name == "Left")
        setLeft(number);
    else if (name == "Top")
        setTop(number);
    else if (name == "Width")
        setWidth(number);
    else if (name == "Height")
        setHeight(number);
    else
        return false;
    return true;
}

bool Control::hitTest(int x, int y, int originX, int originY) const
{
    return m_visible && pixelRect(originX, originY).contains(x, y);
}

} // namespace ombrel::runtime
