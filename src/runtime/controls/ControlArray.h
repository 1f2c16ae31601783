// ControlArray: controls that share a name and differ by index (ll(0), ll(1) ...). Elements are made
// at design time with create(), or at run time with load(), which copies the lowest element (hidden).
#pragma once

#include "runtime/Form.h"

#include <functional>
#include <map>
#include <stdexcept>
#include <string>

namespace ombrel::runtime {

template <class T> class ControlArray {
public:
    // The array's event handlers: one of each for all elements, told which element the event is on.
    struct Handlers
    {
        std::function<void(int index)> click;
        std::function<void(int index)> dblClick;
        std::function<void(int index, int button, int shift, double x, double y)> mouseDown;
        std::function<void(int index, int button, int shift, double x, double y)> mouseUp;
    };

    ControlArray(Form& form, std::string name)
        : m_form(form)
        , m_name(std::move(name))
    {
    }
    // The elements' handlers point at the array.
    ControlArray(const ControlArray&) = delete;
    ControlArray& operator=(const ControlArray&) = delete;

    const std::string& name() const { return m_name; }

    // A design-time element.
    T& create(int index)
    {
        if (exists(index))
            throw std::invalid_argument(m_name + ": element already exists");
        T& control = m_form.add<T>(m_name, index);
        m_elements[index] = &control;
        wire(control, index);
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
        wire(control, index);
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

    // Gives every element, those loaded later too, the array's handlers, so an element that Load makes
    // answers the mouse like the design-time ones.
    void setHandlers(Handlers handlers)
    {
        m_handlers = std::move(handlers);
        for (auto& [index, control] : m_elements)
            wire(*control, index);
    }

private:
    void wire(T& control, int index)
    {
        if (m_handlers.click)
            control.onClick = [this, index] { m_handlers.click(index); };
        if (m_handlers.dblClick)
            control.onDblClick = [this, index] { m_handlers.dblClick(index); };
        if (m_handlers.mouseDown)
            control.onMouseDown = [this, index](int button, int shift, double x, double y) {
                m_handlers.mouseDown(index, button, shift, x, y);
            };
        if (m_handlers.mouseUp)
            control.onMouseUp = [this, index](int button, int shift, double x, double y) {
                m_handlers.mouseUp(index, button, shift, x, y);
            };
    }

    Form& m_form;
    std::string m_name;
    std::map<int, T*> m_elements;
    Handlers m_handlers;
};

} // namespace ombrel::runtime
