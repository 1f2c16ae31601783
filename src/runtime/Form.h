// Form: a top-level surface inside the one full-screen window, with its controls and timers, and the
// events Windows raises on forms. Forms are made and owned by the FormStack; unloading a form
// destroys it and its controls, and the next use makes it afresh in its design state.
#pragma once

#include "runtime/Control.h"
#include "runtime/DrawList.h"
#include "runtime/Timer.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::core {
class FailureLog;
}

namespace ombrel::runtime {

class FormStack;
class EventLoop;

class Form {
public:
    Form(FormStack& stack, std::string name);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const std::string& name() const { return m_name; }
    FormStack& stack() const { return m_stack; }
    EventLoop& loop() const;
    core::FailureLog& failures() const;

    // Lifecycle. load() raises Load once; show() loads, shows, brings to the front and activates;
    // hide() hides and passes activation on; unload() raises Unload and destroys the form at the end of
    // the current event.
    bool loaded() const { return m_loaded; }
    void load();
    void show();
    void hide();
    void unload();
    bool visible() const { return m_visible; }
    void setVisible(bool visible);
    // Makes the form the active one (Activate, GotFocus; LostFocus, Deactivate on the one before).
    void setFocus();
    bool active() const;
    bool enabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    // 0: in front of every other form; 1: behind them.
    void zOrder(int position = 0);

    // Geometry in twips. A maximised form covers the screen whatever these say.
    double left() const { return m_left; }
    double top() const { return m_top; }
    double width() const;
    double height() const;
    void setLeft(double twips);
    void setTop(double twips);
    void setWidth(double twips);
    void setHeight(double twips);
    void move(double left, double top, double width, double height);
    double scaleWidth() const { return width(); }
    double scaleHeight() const { return height(); }
    bool maximised() const { return m_maximised; }
    void setMaximised(bool on);
    // Minimised (WindowState 1): the form keeps its size and shows nothing. Minimising and restoring
    // raise Form_Resize.
    bool minimised() const { return m_minimised; }
    void setMinimised(bool on);
    // The form's area on the screen, in pixels.
    PixelRect pixelRect() const;

    uint32_t backColor() const { return m_backColor; }
    void setBackColor(uint32_t colour);
    const std::string& caption() const { return m_caption; }
    void setCaption(std::string caption) { m_caption = std::move(caption); }
    // Picture: painted stretched over the whole form. A file that cannot be shown clears it.
    const std::string& picture() const { return m_picture; }
    bool setPicture(const std::string& path);
    // PaintPicture: draws a picture into the form's persistent image, at x, y, w, h in twips.
    bool paintPicture(const std::string& path, double x, double y, double w, double h);
    // Cls: clears what paintPicture drew.
    void cls();
    // 99 hides the pointer over the form, 0 shows it.
    int mousePointer() const { return m_mousePointer; }
    void setMousePointer(int pointer);

    FontSpec font() const { return m_font; }
    void setFont(FontSpec font) { m_font = std::move(font); }
    // Height in twips of the text in the form's font (one line per line break).
    double textHeight(std::string_view text) const;
    double textWidth(std::string_view text) const;

    // Controls, in z-order from back to front.
    const std::vector<Control*>& controls() const { return m_zOrder; }
    // By name, and index for array elements ("ll", 3). nullptr if none.
    Control* find(std::string_view name, int index = -1) const;
    // By full name "ll(3)" or "lblPath".
    Control* findByFullName(std::string_view fullName) const;

    // Makes a control owned by the form. The control's constructor takes (Form&, args...).
    template <class T, class... Args> T& add(Args&&... args)
    {
        auto owned = std::make_unique<T>(*this, std::forward<Args>(args)...);
        T& ref = *owned;
        adopt(std::move(owned));
        return ref;
    }
    // Destroys a control made at run time (Unload of an array element).
    void remove(Control& control);
    // Moves a control to the front (0) or the back (1) of the form's controls.
    void zOrderControl(Control& control, int position);

    // The form's timer of that name, or nullptr.
    Timer* findTimer(std::string_view name) const;
    // The form's timers, in the order they were made (for reports of the form's state).
    std::vector<const Timer*> timers() const;
    // A timer that lives as long as the form.
    Timer& addTimer(std::string name, int intervalMs, bool enabled, std::function<void()> onTimer = {});

    // Adds what the form shows: its fill, picture, painted pictures and visible controls.
    void paint(DrawList& out) const;

    // Events, named as the system names its handlers. Mouse x, y are twips inside the form.
    virtual void Form_Load() { }
    virtual void Form_Unload() { }
    virtual void Form_Resize() { }
    virtual void Form_Activate() { }
    virtual void Form_Deactivate() { }
    virtual void Form_GotFocus() { }
    virtual void Form_LostFocus() { }
    virtual void Form_KeyDown(int keyCode, int shift) { (void)keyCode, (void)shift; }
    virtual void Form_KeyUp(int keyCode, int shift) { (void)keyCode, (void)shift; }
    virtual void Form_Click() { }
    virtual void Form_DblClick() { }
    virtual void Form_MouseDown(int button, int shift, double x, double y) { (void)button, (void)shift, (void)x, (void)y; }
    virtual void Form_MouseUp(int button, int shift, double x, double y) { (void)button, (void)shift, (void)x, (void)y; }
    virtual void Form_MouseMove(int button, int shift, double x, double y) { (void)button, (void)shift, (void)x, (void)y; }

    // Something the form shows changed: the next turn paints.
    void changed();
    // Destroys controls removed at run time, once none of their handlers can be running.
    void collectGarbage();

private:
    friend class FormStack;
    void adopt(std::unique_ptr<Control> control);
    void resized(double oldWidth, double oldHeight);

    FormStack& m_stack;
    std::string m_name;
    bool m_loaded = false;
    bool m_visible = false;
    bool m_enabled = true;
    bool m_maximised = false;
    bool m_minimised = false;
    double m_left = 0;
    double m_top = 0;
    double m_width = 7680;
    double m_height = 5760;
    uint32_t m_backColor = 0xC0C0C0; // the system grey of a new form
    std::string m_caption;
    std::string m_picture;
    std::vector<DrawCommand> m_painted; // PaintPicture's persistent image
    int m_mousePointer = 0;
    FontSpec m_font { "MS Sans Serif", 8.25, false };
    std::vector<std::unique_ptr<Control>> m_owned;
    std::vector<Control*> m_zOrder;
    std::vector<std::unique_ptr<Control>> m_removed;
    std::vector<std::unique_ptr<Timer>> m_timers;
};

} // namespace ombrel::runtime
