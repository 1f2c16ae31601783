// ControlArray: controls that share a name and differ by index (ll(0), ll(1) ...). Elements are made
// at design time with create(), or at run time with load(), which copies the lowest element (hidden).
#pragma once

#include "runtime/Form.h"

#include <map>
#include <stdexcept>
#include <string>

namespace ombrel::runtime {

template <class T> class ControlArray {
public:
    ControlArray(Form& form, std::string name)
        : m_form(form)
        , m_name(std::move(name))
    {
    }

    const std::string& name() const { return m_name; }

    // A design-time element.
    T& create(int index)
    {
        if (exists(index))
            throw std::invalid_argument(m_name + ": element already exists");
        T& control = m_form.add<T>(m_name, index);
        m_elements[index] = &control;
        return control;
    }
    // Load at run time: a new element with the lowest element's properties, not visible.
    T& load(int index)
    {
        if (exists(index))
            throw std::invalid_argument(m_name + "(" + std::to_string(index) + ") is already loaded");
        if (index < 0)
            throw std::invalid_argument(m_name + ": negative index");
        T& control = m_form.add<T>(m_name, index);
        if (!m_elements.empty())
            control.copyFrom(*m_elements.begin()->second);
        else
            control.setVisible(false);
        m_elements[index] = &control;
        return control;
    }
    void unload(int index)
    {
        auto it = m_elements.find(index);
        if (it == m_elements.end())
            return;
        T* control = it->second;
        m_elements.erase(it);
        m_form.remove(*control);
    }

    bool exists(int index) const { return m_elements.count(index) != 0; }
    T* get(int index) const
    {
        auto it = m_elements.find(index);
        return it == m_elements.end() ? nullptr : it->second;
    }
    // Throws std::out_of_range for an element that is not loaded ("Control array element doesn't exist").
    T& operator()(int index) const
    {
        T* control = get(index);
        if (!control)
            throw std::out_of_range(m_name + "(" + std::to_string(index) + ") does not exist");
        return *control;
    }
    int count() const { return static_cast<int>(m_elements.size()); }
    int lbound() const { return m_elements.empty() ? 0 : m_elements.begin()->first; }
    int ubound() const { return m_elements.empty() ? -1 : m_elements.rbegin()->first; }

private:
    Form& m_form;
    std::string m_name;
    std::map<int, T*> m_elements;
};

} // namespace ombrel::runtime
