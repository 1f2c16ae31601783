// Label: caption, sizing, wrapping and painting.
#include "runtime/controls/Label.h"

#include "core/TextCodec.h"
#include "platform/Fonts.h"
#include "runtime/Form.h"
#include "runtime/FormStack.h"
#include "runtime/controls/TextLayout.h"

#include <algorithm>

namespace ombrel::runtime {

Label::Label(Form& form, std::string name, int index)
    : Control(form, std::move(name), index)
{
}

void Label::setCaption(std::string caption)
{
    if (caption == m_caption)
        return;
    m_caption = std::move(caption);
    relayout();
    fit();
    changed();
}

void Label::setAutoSize(bool on)
{
    m_autoSize = on;
    relayout();
    fit();
    changed();
}

void Label::setWordWrap(bool on)
{
    m_wordWrap = on;
    relayout();
    fit();
    changed();
}

void Label::setAlignment(int alignment)
{
    m_alignment = std::clamp(alignment, 0, 2);
    relayout();
    changed();
}

void Label::setBackStyle(int style)
{
    m_backStyle = style == 0 ? 0 : 1;
    changed();
}

void Label::setForeColor(uint32_t colour)
{
    m_foreColor = colour & 0xFFFFFF;
    changed();
}

void Label::setBackColor(uint32_t colour)
{
    m_backColor = colour & 0xFFFFFF;
    changed();
}

void Label::setFontName(std::string name)
{
    m_font.name = std::move(name);
    relayout();
    fit();
    changed();
}

void Label::setFontSize(double points)
{
    // A size a hand-edited skin cannot mean is left as it was.
    if (!(points > 0 && points < 2048))
        return;
    m_font.sizePt = points;
    relayout();
    fit();
    changed();
}

void Label::setFontBold(bool bold)
{
    m_font.bold = bold;
    relayout();
    fit();
    changed();
}

void Label::relayout() { ++m_generation; }

const std::vector<std::string>& Label::lines() const
{
    const bool growsAcross = m_autoSize && !m_wordWrap;
    // Only the sides that do not grow with the text shape the lines, so the box that fit() gives the
    // label does not lay it out again.
    const int boxWidth = growsAcross ? -1 : twipsToPixels(width());
    const int boxHeight = m_autoSize ? -1 : twipsToPixels(height());
    if (m_layout.generation == m_generation && m_layout.width == boxWidth && m_layout.height == boxHeight)
        return m_layout.lines;
    auto& fonts = form().stack().services().fonts;
    const int lineHeight = std::max(1, fonts.lineHeight(m_font));
    TextView view;
    view.align = static_cast<TextAlign>(m_alignment);
    view.maxChars = static_cast<size_t>(std::clamp(growsAcross ? kMaxShownPixels : boxWidth, 1, kMaxShownPixels));
    // A box that grows with its lines shows them all, up to the most any screen can hold; a fixed box
    // shows the lines that start inside it.
    const int shownHeight = m_autoSize ? kMaxShownPixels : std::clamp(boxHeight, 0, kMaxShownPixels);
    view.maxLines = std::max(1, (shownHeight + lineHeight - 1) / lineHeight);
    // Most captions are UTF-8 already and are laid out where they lie.
    if (core::isValidUtf8(m_caption))
        m_layout.lines = layoutLines(fonts, m_font, m_caption, boxWidth, view);
    else
        m_layout.lines = layoutLines(fonts, m_font, core::toDisplayText(m_caption), boxWidth, view);
    m_layout.generation = m_generation;
    m_layout.width = boxWidth;
    m_layout.height = boxHeight;
    return m_layout.lines;
}

void Label::fit()
{
    if (!m_autoSize)
        return;
    auto& fonts = form().stack().services().fonts;
    const auto& shownLines = lines();
    int lineHeight = fonts.lineHeight(m_font);
    if (!m_wordWrap) {
        int widest = 0;
        for (const auto& line : shownLines)
            widest = std::max(widest, fonts.measure(m_font, line).w);
        setWidth(pixelsToTwips(widest));
    }
    setHeight(pixelsToTwips(lineHeight * static_cast<int>(shownLines.size())));
}

void Label::paint(DrawList& out, int originX, int originY, const PixelRect& clip) const
{
    PixelRect box = pixelRect(originX, originY);
    // Clip to the part of the box inside the form.
    int x0 = std::max(box.x, clip.x), y0 = std::max(box.y, clip.y);
    int x1 = std::min(box.x + box.w, clip.x + clip.w), y1 = std::min(box.y + box.h, clip.y + clip.h);
    PixelRect boxClip { x0, y0, std::max(0, x1 - x0), std::max(0, y1 - y0) };
    if (m_backStyle == 1) {
        DrawCommand fill;
        fill.kind = DrawCommand::Kind::Fill;
        fill.rect = box;
        fill.clip = boxClip;
        fill.colour = m_backColor;
        out.push_back(fill);
    }
    if (m_caption.empty())
        return;
    int lineHeight = form().stack().services().fonts.lineHeight(m_font);
    int y = box.y;
    for (const auto& line : lines()) {
        DrawCommand text;
        text.kind = DrawCommand::Kind::Text;
        text.rect = { box.x, y, box.w, lineHeight };
        text.clip = boxClip;
        text.colour = m_foreColor;
        text.text = line;
        text.font = m_font;
        text.align = static_cast<TextAlign>(m_alignment);
        out.push_back(std::move(text));
        y += lineHeight;
    }
}

std::optional<PropertyValue> Label::propertyByName(std::string_view name) const
{
    if (name == "Caption")
        return m_caption;
    if (name == "AutoSize")
        return m_autoSize;
    return Control::propertyByName(name);
}

bool Label::setPropertyByName(std::string_view name, const PropertyValue& value)
{
    if (name == "Caption") {
        const auto* text = std::get_if<std::string>(&value);
        if (text)
            setCaption(*text);
        return text != nullptr;
    }
    if (name == "AutoSize") {
        const auto* flag = std::get_if<bool>(&value);
        if (flag)
            setAutoSize(*flag);
        return flag != nullptr;
    }
    return Control::setPropertyByName(name, value);
}

void Label::copyFrom(const Control& other)
{
    Control::copyFrom(other);
    if (auto* label = dynamic_cast<const Label*>(&other)) {
        m_caption = label->m_caption;
        m_autoSize = label->m_autoSize;
        m_wordWrap = label->m_wordWrap;
        m_alignment = label->m_alignment;
        m_backStyle = label->m_backStyle;
        m_foreColor = label->m_foreColor;
        m_backColor = label->m_backColor;
        m_font = label->m_font;
        relayout();
    }
}

} // namespace ombrel::runtime
