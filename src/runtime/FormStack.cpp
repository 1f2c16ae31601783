// FormStack: z-order, activation and focus events, input routing and painting of the program's forms.
#include "runtime/FormStack.h"

#include "core/FailureLog.h"
#include "platform/Files.h"
#include "platform/Images.h"
#include "platform/Renderer.h"
#include "runtime/EventLoop.h"
#include "runtime/Trace.h"

#include <algorithm>
#include <stdexcept>

namespace ombrel::runtime {

FormStack::FormStack(FormServices services)
    : m_services(std::move(services))
{
}

FormStack::~FormStack()
{
    // Forms' controls and timers refer to the loop; they go before the stack's members do.
    m_zOrder.clear();
    m_active = nullptr;
    m_graveyard.clear();
    m_forms.clear();
}

void FormStack::define(const std::string& name, std::function<std::unique_ptr<Form>(FormStack&)> make)
{
    m_makers[name] = std::move(make);
}

Form& FormStack::form(const std::string& name)
{
    if (auto it = m_forms.find(name); it != m_forms.end())
        return *it->second;
    auto maker = m_makers.find(name);
    if (maker == m_makers.end())
        throw std::out_of_range("no form named " + name);
    auto made = maker->second(*this);
    Form& ref = *made;
    m_forms[name] = std::move(made);
    return ref;
}

Form* FormStack::existing(const std::string& name) const
{
    auto it = m_forms.find(name);
    return it == m_forms.end() ? nullptr : it->second.get();
}

std::string FormStack::relative(const std::string& path) const
{
    const std::string& home = m_services.home;
    if (!home.empty() && path.size() >= home.size() && path.compare(0, home.size(), home) == 0)
        return path.substr(home.size());
    return path;
}

void FormStack::trace(const std::string& line) { m_services.trace.effect(line); }

void FormStack::formLoaded(Form& form)
{
    m_zOrder.push_back(&form);
    trace("form load " + form.name());
}

void FormStack::formShown(Form& form)
{
    trace("form show " + form.name());
    invalidate();
}

void FormStack::formHidden(Form& form)
{
    trace("form hide " + form.name());
    invalidate();
    if (m_active == &form)
        activate(topmostActivatable());
}

void FormStack::formUnloaded(Form& form)
{
    trace("form unload " + form.name());
    std::erase(m_zOrder, &form);
    invalidate();
    if (m_pressedForm == form.name())
        m_pressedForm.clear();
    bool wasActive = m_active == &form;
    if (wasActive)
        m_active = nullptr; // an unloaded form gets no Deactivate
    if (auto it = m_forms.find(form.name()); it != m_forms.end() && it->second.get() == &form) {
        m_graveyard.push_back(std::move(it->second));
        m_forms.erase(it);
    }
    if (wasActive)
        activate(topmostActivatable());
}

void FormStack::bringToFront(Form& form)
{
    auto it = std::find(m_zOrder.begin(), m_zOrder.end(), &form);
    if (it == m_zOrder.end() || it + 1 == m_zOrder.end())
        return;
    m_zOrder.erase(it);
    m_zOrder.push_back(&form);
    invalidate();
}

void FormStack::sendToBack(Form& form)
{
    auto it = std::find(m_zOrder.begin(), m_zOrder.end(), &form);
    if (it == m_zOrder.end() || it == m_zOrder.begin())
        return;
    m_zOrder.erase(it);
    m_zOrder.insert(m_zOrder.begin(), &form);
    invalidate();
}

Form* FormStack::topmostActivatable() const
{
    for (auto it = m_zOrder.rbegin(); it != m_zOrder.rend(); ++it)
        if ((*it)->visible() && (*it)->enabled())
            return *it;
    return nullptr;
}

void FormStack::activate(Form* form)
{
    if (form == m_active)
        return;
    Form* old = m_active;
    m_active = form;
    // While the window lacks the system's focus nothing is raised: the events come when it returns.
    if (!m_windowFocused)
        return;
    if (old) {
        old->Form_LostFocus();
        old->Form_Deactivate();
    }
    // A handler of the old form may have moved the activation on already.
    if (form && m_active == form) {
        form->Form_Activate();
        if (m_active == form)
            form->Form_GotFocus();
    }
}

void FormStack::dispatch(const InputEvent& event)
{
    switch (event.kind) {
    case InputKind::KeyDown:
    case InputKind::KeyUp: {
        Form* form = m_active;
        if (!form || !form->enabled() || !form->visible() || !m_windowFocused)
            return;
        if (event.kind == InputKind::KeyDown)
            form->Form_KeyDown(event.vk, event.shift);
        else
            form->Form_KeyUp(event.vk, event.shift);
        return;
    }
    case InputKind::FocusLost:
        if (!m_windowFocused)
            return;
        m_windowFocused = false;
        if (Form* form = m_active) {
            form->Form_LostFocus();
            if (m_active == form)
                form->Form_Deactivate();
        }
        return;
    case InputKind::FocusGained:
        if (m_windowFocused)
            return;
        m_windowFocused = true;
        if (!m_active)
            m_active = topmostActivatable();
        if (Form* form = m_active) {
            form->Form_Activate();
            if (m_active == form)
                form->Form_GotFocus();
        }
        return;
    case InputKind::Quit:
        loop().quit(0);
        return;
    default:
        dispatchMouse(event);
    }
}

Form* FormStack::formAt(int x, int y) const
{
    for (auto it = m_zOrder.rbegin(); it != m_zOrder.rend(); ++it)
        if ((*it)->visible() && (*it)->pixelRect().contains(x, y))
            return *it;
    return nullptr;
}

namespace {

    struct MouseTarget {
        Form* form = nullptr;
        Control* control = nullptr;
        int x = 0;
        int y = 0;
    };

    Control* controlAt(const Form& form, int x, int y)
    {
        PixelRect area = form.pixelRect();
        const auto& controls = form.controls();
        for (auto it = controls.rbegin(); it != controls.rend(); ++it)
            if ((*it)->hitTest(x, y, area.x, area.y))
                return *it;
        return nullptr;
    }

} // namespace

void FormStack::dispatchMouse(const InputEvent& event)
{
    // Finds the target again before each step: a handler may unload what the next step would reach.
    auto resolve = [&]() -> MouseTarget {
        MouseTarget t;
        if (!event.target.empty()) {
            auto dot = event.target.find('.');
            Form* form = existing(event.target.substr(0, dot));
            if (!form || !form->loaded() || !form->visible())
                return {};
            t.form = form;
            PixelRect area = form->pixelRect();
            if (dot != std::string::npos) {
                t.control = form->findByFullName(event.target.substr(dot + 1));
                if (!t.control || !t.control->visible())
                    return {}; // a hidden control is not on the screen
                PixelRect box = t.control->pixelRect(area.x, area.y);
                t.x = box.x + box.w / 2;
                t.y = box.y + box.h / 2;
            } else {
                t.x = area.x + area.w / 2;
                t.y = area.y + area.h / 2;
            }
            return t;
        }
        t.x = event.x;
        t.y = event.y;
        t.form = formAt(t.x, t.y);
        if (t.form)
            t.control = controlAt(*t.form, t.x, t.y);
        return t;
    };
    auto local = [](const MouseTarget& t, double& lx, double& ly) {
        PixelRect area = t.form->pixelRect();
        double px = t.x - area.x, py = t.y - area.y;
        if (t.control) {
            PixelRect box = t.control->pixelRect(area.x, area.y);
            px = t.x - box.x;
            py = t.y - box.y;
        }
        lx = pixelsToTwips(px);
        ly = pixelsToTwips(py);
    };
    auto down = [&](bool dbl) {
        MouseTarget t = resolve();
        if (!t.form || !t.form->enabled())
            return;
        if (m_active != t.form)
            activate(t.form); // a click activates the form it lands on
        t = resolve();
        if (!t.form)
            return;
        double lx, ly;
        local(t, lx, ly);
        if (dbl) {
            m_pressedForm.clear();
            if (t.control) {
                if (t.control->onDblClick)
                    t.control->onDblClick();
            } else {
                t.form->Form_DblClick();
            }
            return;
        }
        m_pressedForm = t.form->name();
        m_pressedControl = t.control ? t.control->fullName() : std::string();
        if (t.control) {
            if (t.control->onMouseDown)
                t.control->onMouseDown(event.button, event.shift, lx, ly);
        } else {
            t.form->Form_MouseDown(event.button, event.shift, lx, ly);
        }
    };
    auto up = [&]() {
        MouseTarget t = resolve();
        if (!t.form || !t.form->enabled())
            return;
        double lx, ly;
        local(t, lx, ly);
        std::string formName = t.form->name();
        std::string controlName = t.control ? t.control->fullName() : std::string();
        if (t.control) {
            if (t.control->onMouseUp)
                t.control->onMouseUp(event.button, event.shift, lx, ly);
        } else {
            t.form->Form_MouseUp(event.button, event.shift, lx, ly);
        }
        bool clicked = m_pressedForm == formName && m_pressedControl == controlName;
        m_pressedForm.clear();
        if (!clicked || event.button != 1)
            return;
        t = resolve();
        if (!t.form || t.form->name() != formName)
            return;
        if (t.control && t.control->fullName() == controlName) {
            if (t.control->onClick)
                t.control->onClick();
        } else if (!t.control && controlName.empty()) {
            t.form->Form_Click();
        }
    };

    switch (event.kind) {
    case InputKind::MouseMove: {
        MouseTarget t = resolve();
        if (!t.form || !t.form->enabled())
            return;
        double lx, ly;
        local(t, lx, ly);
        if (t.control) {
            if (t.control->onMouseMove)
                t.control->onMouseMove(0, event.shift, lx, ly);
        } else {
            t.form->Form_MouseMove(0, event.shift, lx, ly);
        }
        return;
    }
    case InputKind::MouseDown:
        down(event.clicks >= 2);
        return;
    case InputKind::MouseUp:
        up();
        return;
    case InputKind::Click:
        down(false);
        up();
        return;
    case InputKind::DblClick:
        // Windows' order for a double click: down, up, click, dblclick, up.
        down(false);
        up();
        down(true);
        up();
        return;
    default:
        return;
    }
}

DrawList FormStack::frame() const
{
    DrawList out;
    for (const Form* form : m_zOrder)
        form->paint(out);
    return out;
}

void FormStack::collectGarbage()
{
    m_graveyard.clear();
    for (auto& [name, form] : m_forms)
        form->collectGarbage();
}

void FormStack::paintIfChanged()
{
    // Destroy unloaded forms only from the outermost turn: an inner doEvents() may run inside their handlers.
    if (loop().depth() <= 1)
        collectGarbage();
    bool pointer = !m_active || m_active->mousePointer() != 99;
    if (static_cast<int>(pointer) != m_pointerVisible) {
        m_pointerVisible = pointer;
        m_services.renderer.setPointerVisible(pointer);
    }
    if (!m_dirty)
        return;
    m_dirty = false;
    m_services.renderer.present(frame());
}

std::optional<FormStack::Picture> FormStack::loadPicture(const std::string& path) const
{
    // The callers keep the old picture; the owner finds the reason in the log.
    auto resolved = m_services.files.resolveFile(path);
    if (!resolved) {
        m_services.failures.note("picture " + relative(platform::toNativePath(path)) + ": no such file");
        return std::nullopt;
    }
    auto size = m_services.images.probe(*resolved);
    if (!size) {
        m_services.failures.note("picture " + relative(*resolved) + ": cannot be loaded");
        return std::nullopt;
    }
    return Picture { *resolved, *size };
}

double FormStack::screenWidth() const { return pixelsToTwips(m_services.renderer.screenSize().w); }
double FormStack::screenHeight() const { return pixelsToTwips(m_services.renderer.screenSize().h); }

} // namespace ombrel::runtime
