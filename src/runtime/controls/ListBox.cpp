// ListBox: items and selection.
#include "runtime/controls/ListBox.h"

namespace ombrel::runtime {

ListBox::ListBox(Form& form, std::string name, int index)
    : Control(form, std::move(name), index)
{
}

void ListBox::addItem(std::string item) { m_items.push_back(std::move(item)); }

void ListBox::removeItem(int index)
{
    if (index < 0 || index >= listCount())
        throw InvalidValue("Invalid procedure call or argument");
    m_items.erase(m_items.begin() + index);
    if (m_listIndex == index)
        m_listIndex = -1;
    else if (m_listIndex > index)
        --m_listIndex;
}

void ListBox::clear()
{
    m_items.clear();
    m_listIndex = -1;
}

std::string ListBox::list(int index) const
{
    if (index < 0 || index >= listCount())
        return {};
    return m_items[static_cast<size_t>(index)];
}

void ListBox::setListIndex(int index)
{
    if (index < -1 || index >= listCount())
        throw InvalidValue(name() + ".ListIndex: Invalid property value");
    if (index == m_listIndex)
        return;
    m_listIndex = index;
    if (onClick)
        onClick();
}

void ListBox::paint(DrawList&, int, int, const PixelRect&) const
{
    // Never seen: the strips of the browser show the list.
}

std::optional<PropertyValue> ListBox::propertyByName(std::string_view name) const
{
    if (name == "Text")
        return text();
    return Control::propertyByName(name);
}

} // namespace ombrel::runtime
