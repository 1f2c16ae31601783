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

    // The lines as painted now (UTF-8).
    std::vector<std::string> lines() const;

    void paint(DrawList& out, int originX, int originY, const PixelRect& clip) const override;
    void copyFrom(const Control& other) override;

private:
    void fit();

    std::string m_caption;
    bool m_autoSize = false;
    bool m_wordWrap = false;
    int m_alignment = 0;
    int m_backStyle = 1;
    uint32_t m_foreColor = 0;
    uint32_t m_backColor = 0xC0C0C0;
    FontSpec m_font { "MS Sans Serif", 8.25, false };
};

} // namespace ombrel::runtime
