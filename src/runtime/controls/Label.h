// Label: a caption in a box, with the sizing and wrapping rules of a Windows label.
#pragma once

#include "runtime/Control.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ombrel::runtime {

class Label : public Control {
public:
    Label(Form& form, std::string name, int index = -1);

    // The caption as bytes; shown as UTF-8 when valid, else as Windows-1252.
    const std::string& caption() const { return m_caption; }
    void setCaption(std::string caption);

    // AutoSize without WordWrap: the box fits one line per line break. With WordWrap: the width stays
    // and the height fits the wrapped lines.
    bool autoSize() const { return m_autoSize; }
    void setAutoSize(bool on);
    bool wordWrap() const { return m_wordWrap; }
    void setWordWrap(bool on);
    // 0 left, 1 right, 2 centre.
    int alignment() const { return m_alignment; }
    void setAlignment(int alignment);
    // 0 transparent, 1 opaque (BackColor filled).
    int backStyle() const { return m_backStyle; }
    void setBackStyle(int style);
    uint32_t foreColor() const { return m_foreColor; }
    void setForeColor(uint32_t colour);
    uint32_t backColor() const { return m_backColor; }
    void setBackColor(uint32_t colour);

    const FontSpec& font() const { return m_font; }
    void setFontName(std::string name);
    void setFontSize(double points);
    void setFontBold(bool bold);

    // The lines as painted now (UTF-8): only what the box can show. Lines below its bottom are left
    // out, and a line is cut to as many characters as the box is wide in pixels, since no character is
    // narrower than a pixel. A box that grows with its text can show no more than kMaxShownPixels.
    const std::vector<std::string>& lines() const;

    // Wider than any screen, and than the widest line the renderer can draw.
    static constexpr int kMaxShownPixels = 16384;

    void paint(DrawList& out, int originX, int originY, const PixelRect& clip) const override;
    void copyFrom(const Control& other) override;
    // Adds Caption and AutoSize.
    std::optional<PropertyValue> propertyByName(std::string_view name) const override;
    bool setPropertyByName(std::string_view name, const PropertyValue& value) override;

private:
    void fit();
    // Something the lines depend on has changed.
    void relayout();

    // The lines of the last layout and what they were laid out for, so a repaint costs no layout.
    struct Layout
    {
        unsigned generation = 0;
        int width = -1;
        int height = -1;
        std::vector<std::string> lines;
    };

    std::string m_caption;
    bool m_autoSize = false;
    bool m_wordWrap = false;
    int m_alignment = 0;
    int m_backStyle = 1;
    uint32_t m_foreColor = 0;
    uint32_t m_backColor = 0xC0C0C0;
    FontSpec m_font { "MS Sans Serif", 8.25, false };
    unsigned m_generation = 1;
    mutable Layout m_layout;
};

} // namespace ombrel::runtime
