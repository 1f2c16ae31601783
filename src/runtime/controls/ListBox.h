// ListBox: the list of names and the selection of the browser. It lies off the form and is never
// painted; Visible is kept as a flag. Each change of ListIndex raises Click.
#pragma once

#include "runtime/Control.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace ombrel::runtime {

// "Invalid property value": an index outside the list, as the list box refuses it.
class InvalidValue : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class ListBox : public Control {
public:
    ListBox(Form& form, std::string name, int index = -1);

    void addItem(std::string item);
    void removeItem(int index);
    // Empties the list; the selection becomes -1 without a Click.
    void clear();
    int listCount() const { return static_cast<int>(m_items.size()); }
    // List(i): the item, or "" outside the list.
    std::string list(int index) const;
    // Text: the selected item, or "".
    std::string text() const { return list(m_listIndex); }

    int listIndex() const { return m_listIndex; }
    // -1 clears the selection. Throws InvalidValue outside -1..ListCount-1. Raises Click on a change.
    void setListIndex(int index);

    void paint(DrawList& out, int originX, int originY, const PixelRect& clip) const override;
    bool hitTest(int, int, int, int) const override { return false; }
    // Adds Text, which can be read only here: a selection is made through ListIndex.
    std::optional<PropertyValue> propertyByName(std::string_view name) const override;

private:
    std::vector<std::string> m_items;
    int m_listIndex = -1;
};

} // namespace ombrel::runtime
