// Form: lifecycle, geometry, painting and controls of one form.
#include "runtime/Form.h"

#include "core/TextCodec.h"
#include "platform/Fonts.h"
#include "platform/Renderer.h"
#include "runtime/EventLoop.h"
#include "runtime/FormStack.h"

#include <algorithm>
#include <charconv>

namespace ombrel::runtime {

Form::Form(FormStack& stack, std::string name)
    : m_stack(stack)
    , m_name(std::move(name))
{
}

Form::~Form() = default;

EventLoop& Form::loop() const { return m_stack.loop(); }
core::FailureLog& Form::failures() const { return m_stack.services().failures; }

void Form::load()
{
    if (m_loaded)
        return;
    m_loaded = true;
    m_stack.formLoaded(*this);
    Form_Load();
}

void Form::show()
{
    load();
    if (!m_loaded)
        return; // unloaded by its own Load
    bool firstShow = !m_visible;
    if (firstShow) {
        m_visible = true;
        m_stack.formShown(*this);
        Form_Resize();
    }
    m_stack.bringToFront(*this);
    if (m_enabled && m_visible)
        m_stack.activate(this);
}

void Form::hide()
{
    if (!m_loaded || !m_visible)
        return;
    m_visible = false;
    m_stack.formHidden(*this);
}

void Form::setVisible(bool visible)
{
    if (visible)
        show();
    else
        hide();
}

void Form::unload()
{
    if (!m_loaded)
        return;
    Form_Unload();
    m_loaded = false;
    m_visible = false;
    // Destruction waits for the end of the turn, but nothing of the form may tick from now on.
    for (auto& timer : m_timers)
        timer->setEnabled(false);
    m_stack.formUnloaded(*this);
}

void Form::setFocus()
{
    if (!m_loaded || !m_visible || !m_enabled)
        return; // Windows refuses the focus to a hidden or disabled form
    m_stack.activate(this);
}

bool Form::active() const { return m_stack.activeForm() == this; }

void Form::setEnabled(bool enabled)
{
    m_enabled = enabled;
    changed();
}

void Form::zOrder(int position)
{
    if (!m_loaded)
        return;
    if (position == 0)
        m_stack.bringToFront(*this);
    else
        m_stack.sendToBack(*this);
}

double Form::width() const { return m_maximised ? m_stack.screenWidth() : m_width; }
double Form::height() const { return m_maximised ? m_stack.screenHeight() : m_height; }

void Form::resized(double oldWidth, double oldHeight)
{
    changed();
    if (m_loaded && (width() != oldWidth || height() != oldHeight))
        Form_Resize();
}

void Form::setLeft(double twips)
{
    m_left = twips;
    changed();
}

void Form::setTop(double twips)
{
    m_top = twips;
    changed();
}

void Form::setWidth(double twips)
{
    double w = width(), h = height();
    m_width = std::max(0.0, twips);
    resized(w, h);
}

void Form::setHeight(double twips)
{
    double w = width(), h = height();
    m_height = std::max(0.0, twips);
    resized(w, h);
}

void Form::move(double left, double top, double newWidth, double newHeight)
{
    double w = width(), h = height();
    m_left = left;
    m_top = top;
    m_width = std::max(0.0, newWidth);
    m_height = std::max(0.0, newHeight);
    resized(w, h);
}

void Form::setMaximised(bool on)
{
    double w = width(), h = height();
    m_maximised = on;
    resized(w, h);
}

void Form::setMinimised(bool on)
{
    if (m_minimised == on)
        return;
    m_minimised = on;
    changed();
    if (m_loaded)
        Form_Resize();
}

PixelRect Form::pixelRect() const
{
    if (m_maximised) {
        auto size = m_stack.services().renderer.screenSize();
        return { 0, 0, size.w, size.h };
    }
    return { twipsToPixels(m_left), twipsToPixels(m_top), twipsToPixels(m_width), twipsToPixels(m_height) };
}

void Form::setBackColor(uint32_t colour)
{
    m_backColor = colour & 0xFFFFFF;
    changed();
}

bool Form::setPicture(const std::string& path)
{
    if (path.empty()) {
        m_picture.clear();
        changed();
        return true;
    }
    auto picture = m_stack.loadPicture(path);
    if (!picture)
        return false; // the assignment fails; the old picture stays
    m_picture = picture->path;
    changed();
    return true;
}

bool Form::paintPicture(const std::string& path, double x, double y, double w, double h)
{
    auto picture = m_stack.loadPicture(path);
    if (!picture)
        return false;
    DrawCommand cmd;
    cmd.kind = DrawCommand::Kind::Image;
    cmd.rect = { twipsToPixels(x), twipsToPixels(y), twipsToPixels(w), twipsToPixels(h) };
    cmd.path = picture->path;
    cmd.fit = ImageFit::Stretch;
    m_painted.push_back(std::move(cmd));
    changed();
    return true;
}

void Form::cls()
{
    m_painted.clear();
    changed();
}

void Form::setMousePointer(int pointer)
{
    m_mousePointer = pointer;
    changed();
}

static int lineCount(std::string_view text)
{
    int lines = 1;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            ++lines;
            if (i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
        } else if (text[i] == '\n') {
            ++lines;
        }
    }
    return lines;
}

double Form::textHeight(std::string_view text) const
{
    int px = m_stack.services().fonts.lineHeight(m_font);
    return pixelsToTwips(px) * lineCount(text);
}

double Form::textWidth(std::string_view text) const
{
    std::string shown = core::toDisplayText(text);
    int widest = 0;
    size_t start = 0;
    while (start <= shown.size()) {
        size_t end = shown.find_first_of("\r\n", start);
        std::string_view line = std::string_view(shown).substr(start, end == std::string::npos ? std::string::npos : end - start);
        widest = std::max(widest, m_stack.services().fonts.measure(m_font, line).w);
        if (end == std::string::npos)
            break;
        start = end + 1;
        if (shown[end] == '\r' && start < shown.size() && shown[start] == '\n')
            ++start;
    }
    return pixelsToTwips(widest);
}

Control* Form::find(std::string_view name, int index) const
{
    for (const auto& control : m_owned)
        if (control->name() == name && control->index() == index)
            return control.get();
    return nullptr;
}

Control* Form::findByFullName(std::string_view fullName) const
{
    auto open = fullName.find('(');
    if (open == std::string_view::npos || fullName.back() != ')')
        return find(fullName, -1);
    int index = -1;
    auto digits = fullName.substr(open + 1, fullName.size() - open - 2);
    auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), index);
    if (ec != std::errc() || end != digits.data() + digits.size() || index < 0)
        return nullptr;
    return find(fullName.substr(0, open), index);
}

void Form::adopt(std::unique_ptr<Control> control)
{
    m_zOrder.push_back(control.get());
    m_owned.push_back(std::move(control));
    changed();
}

void Form::remove(Control& control)
{
    std::erase(m_zOrder, &control);
    auto it = std::find_if(m_owned.begin(), m_owned.end(), [&](const auto& owned) { return owned.get() == &control; });
    if (it != m_owned.end()) {
        // Its own handler may be running: destroyed with the form's other garbage at the end of the turn.
        m_removed.push_back(std::move(*it));
        m_owned.erase(it);
    }
    changed();
}

void Form::zOrderControl(Control& control, int position)
{
    auto it = std::find(m_zOrder.begin(), m_zOrder.end(), &control);
    if (it == m_zOrder.end())
        return;
    m_zOrder.erase(it);
    if (position == 0)
        m_zOrder.push_back(&control);
    else
        m_zOrder.insert(m_zOrder.begin(), &control);
    changed();
}

Timer& Form::addTimer(std::string name, int intervalMs, bool enabled, std::function<void()> onTimer)
{
    m_timers.push_back(std::make_unique<Timer>(loop(), std::move(name), intervalMs, enabled, std::move(onTimer)));
    return *m_timers.back();
}

Timer* Form::findTimer(std::string_view name) const
{
    for (const auto& timer : m_timers)
        if (timer->name() == name)
            return timer.get();
    return nullptr;
}

std::vector<const Timer*> Form::timers() const
{
    std::vector<const Timer*> timers;
    for (const auto& timer : m_timers)
        timers.push_back(timer.get());
    return timers;
}

void Form::paint(DrawList& out) const
{
    if (!m_loaded || !m_visible || m_minimised)
        return;
    PixelRect area = pixelRect();
    DrawCommand fill;
    fill.kind = DrawCommand::Kind::Fill;
    fill.rect = area;
    fill.clip = area;
    fill.colour = m_backColor;
    out.push_back(fill);
    if (!m_picture.empty()) {
        DrawCommand picture;
        picture.kind = DrawCommand::Kind::Image;
        picture.rect = area;
        picture.clip = area;
        picture.path = m_picture;
        picture.fit = ImageFit::Stretch;
        out.push_back(std::move(picture));
    }
    for (DrawCommand cmd : m_painted) {
        cmd.rect.x += area.x;
        cmd.rect.y += area.y;
        cmd.clip = area;
        out.push_back(std::move(cmd));
    }
    for (const Control* control : m_zOrder)
        if (control->visible())
            control->paint(out, area.x, area.y, area);
}

void Form::changed() { m_stack.invalidate(); }

void Form::collectGarbage() { m_removed.clear(); }

} // namespace ombrel::runtime
