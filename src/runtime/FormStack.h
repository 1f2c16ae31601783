// FormStack: the forms of the program inside its one window: which are loaded, their z-order, which
// one is active, whether the window has the system's focus, where input goes, and the frame to paint.
#pragma once

#include "runtime/DrawList.h"
#include "runtime/Form.h"
#include "runtime/InputEvent.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ombrel::platform {
class Fonts;
class Images;
class Files;
class Renderer;
}

namespace ombrel::core {
class FailureLog;
}

namespace ombrel::runtime {

class EventLoop;
class Trace;

struct FormServices {
    EventLoop& loop;
    Trace& trace;
    platform::Fonts& fonts;
    platform::Images& images;
    platform::Files& files;
    platform::Renderer& renderer;
    std::string home; // the program's folder, with a trailing '/': trace lines show paths under it relative
    // NOTE: every step that the cabinet passes over runs in a form's handler or below one, so the
    // forms' services are the narrowest thing that reaches all of them; the platform's backends
    // never need it.
    core::FailureLog& failures;
};

class FormStack {
public:
    explicit FormStack(FormServices services);
    ~FormStack();
    FormStack(const FormStack&) = delete;
    FormStack& operator=(const FormStack&) = delete;

    FormServices& services() { return m_services; }
    EventLoop& loop() { return m_services.loop; }
    core::FailureLog& failures() { return m_services.failures; }

    // Says how to make a form. The form is made on first use and again after each unload.
    void define(const std::string& name, std::function<std::unique_ptr<Form>(FormStack&)> make);
    // The form by name, made (not loaded) if it does not exist yet. Throws std::out_of_range for an
    // undefined name.
    Form& form(const std::string& name);
    template <class T> T& form(const std::string& name) { return static_cast<T&>(form(name)); }
    // The form if it exists now (loaded or made), else nullptr; makes nothing.
    Form* existing(const std::string& name) const;

    // Loaded forms, from the back to the front.
    const std::vector<Form*>& zOrder() const { return m_zOrder; }
    Form* activeForm() const { return m_active; }
    bool windowFocused() const { return m_windowFocused; }

    // Input from the loop: keys to the active form, mouse to what is under the pointer, focus changes.
    void dispatch(const InputEvent& event);

    // The screen as it stands, bottom to top.
    DrawList frame() const;
    // Paint if anything changed since the last paint.
    void paintIfChanged();
    void invalidate() { m_dirty = true; }
    bool dirty() const { return m_dirty; }

    // A picture file as it can be shown: its path on disk (found whatever the case of its letters) and its
    // size; nullopt when it is missing or no picture.
    struct Picture {
        std::string path;
        PixelSize size;
    };
    std::optional<Picture> loadPicture(const std::string& path) const;

    // Screen.Width and Screen.Height, in twips.
    double screenWidth() const;
    double screenHeight() const;

    // Writes one trace line; paths under the program's folder are shown relative to it.
    void trace(const std::string& line);
    std::string relative(const std::string& path) const;

    // Used by Form.
    void formLoaded(Form& form);
    void formShown(Form& form);
    void formHidden(Form& form);
    void formUnloaded(Form& form);
    void activate(Form* form);
    void bringToFront(Form& form);
    void sendToBack(Form& form);

    // Destroys unloaded forms once no handler of theirs can be running.
    void collectGarbage();

private:
    Form* topmostActivatable() const;
    void deactivateCurrent();
    Form* formAt(int x, int y) const;
    void dispatchMouse(const InputEvent& event);

    FormServices m_services;
    std::map<std::string, std::function<std::unique_ptr<Form>(FormStack&)>> m_makers;
    std::map<std::string, std::unique_ptr<Form>> m_forms;
    std::vector<std::unique_ptr<Form>> m_graveyard;
    std::vector<Form*> m_zOrder;
    Form* m_active = nullptr;
    bool m_windowFocused = true;
    bool m_dirty = true;
    int m_pointerVisible = -1;
    // The control a mouse button went down on, for Click on release.
    std::string m_pressedForm;
    std::string m_pressedControl;
};

} // namespace ombrel::runtime
