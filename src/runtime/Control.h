// Control: what every control of a form shares: its name and index (ll(3)), its box in twips,
// visibility, z-order within the form, and the mouse events.
#pragma once

#include "runtime/DrawList.h"
#include "runtime/Geometry.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace ombrel::runtime {

class Form;

// A property's value when it is reached by name: a number (a position or size), a flag (Visible) or a
// text (Caption, Text, Tag).
using PropertyValue = std::variant<double, bool, std::string>;

class Control {
public:
    // index -1: a single control; 0 and above: an element of a control array.
    Control(Form& form, std::string name, int index = -1);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const std::string& name() const { return m_name; }
    int index() const { return m_index; }
    // "lblPath", or "ll(3)" for an array element.
    std::string fullName() const;
    Form& form() const { return m_form; }

    double left() const { return m_left; }
    double top() const { return m_top; }
    double width() const { return m_width; }
    double height() const { return m_height; }
    void setLeft(double twips);
    void setTop(double twips);
    void setWidth(double twips);
    void setHeight(double twips);
    void move(double left, double top, double width, double height);

    bool visible() const { return m_visible; }
    void setVisible(bool visible);
    bool enabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }
    // 0: in front of the form's other controls; 1: behind them.
    void zOrder(int position = 0);

    // Free text for the program's own notes about the control; the runtime never reads it.
    const std::string& tag() const { return m_tag; }
    void setTag(std::string tag) { m_tag = std::move(tag); }

    // Properties by name ("Left", "Caption"), for code that walks a form's controls without knowing
    // their kinds. Every control answers Visible, Left, Top, Width, Height and Tag; a kind adds its own.
    // nullopt: this kind has no such property. false: the write was refused (no such property, one that
    // cannot be written, or a value of the wrong type), and nothing changed.
    virtual std::optional<PropertyValue> propertyByName(std::string_view name) const;
    virtual bool setPropertyByName(std::string_view name, const PropertyValue& value);

    // The box in screen pixels, for a form whose client area starts at origin.
    PixelRect pixelRect(int originX, int originY) const;

    // Adds what the control shows. clip is the form's area on the screen.
    virtual void paint(DrawList& out, int originX, int originY, const PixelRect& clip) const = 0;
    // Takes over what a control array's new element inherits from its first one (everything but
    // Visible, which a loaded element starts without).
    virtual void copyFrom(const Control& other);

    // Does a click at this screen point land on the control? (Invisible ones are never hit.)
    virtual bool hitTest(int x, int y, int originX, int originY) const;

    // Mouse events: button 1 left, 2 right; shift mask; x, y in twips inside the control.
    std::function<void(int button, int shift, double x, double y)> onMouseDown;
    std::function<void(int button, int shift, double x, double y)> onMouseUp;
    std::function<void(int button, int shift, double x, double y)> onMouseMove;
    std::function<void()> onClick;
    std::function<void()> onDblClick;

protected:
    // Something the control shows changed: the next turn paints.
    void changed();

private:
    Form& m_form;
    std::string m_name;
    int m_index;
    double m_left = 0;
    double m_top = 0;
    double m_width = 1200;
    double m_height = 495;
    bool m_visible = true;
    bool m_enabled = true;
    std::string m_tag;
};

} // namespace ombrel::runtime
