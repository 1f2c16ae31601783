// TextLayout: line breaking for labels.
#include "runtime/controls/TextLayout.h"

#include "platform/Fonts.h"

namespace ombrel::runtime {

namespace {

bool startsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

// The offset behind the first `count` characters of text, or npos when it has no more than that.
size_t afterChars(std::string_view text, size_t count)
{
    size_t seen = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (startsCharacter(text[i]) && seen++ == count)
            return i;
    }
    return std::string_view::npos;
}

// The offset of the last `count` characters of text.
size_t lastChars(std::string_view text, size_t count)
{
    size_t seen = 0;
    for (size_t i = text.size(); i > 0; --i) {
        if (startsCharacter(text[i - 1]) && ++seen == count)
            return i - 1;
    }
    return 0;
}

// The next paragraph (up to a line break) from `pos`, which moves behind the break.
std::string_view nextParagraph(std::string_view text, size_t& pos)
{
    const size_t start = pos;
    size_t end = start;
    while (end < text.size() && text[end] != '\r' && text[end] != '\n')
        ++end;
    if (end == text.size()) {
        pos = text.size() + 1;
        return text.substr(start);
    }
    pos = end + (text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n' ? 2 : 1);
    return text.substr(start, end - start);
}

} // namespace

std::string_view visiblePart(std::string_view utf8, size_t maxChars, TextAlign align)
{
    const size_t cut = afterChars(utf8, maxChars);
    if (cut == std::string_view::npos)
        return utf8;
    if (align == TextAlign::Left)
        return utf8.substr(0, cut);
    if (align == TextAlign::Right)
        return utf8.substr(lastChars(utf8, maxChars));
    size_t total = 0;
    for (char byte : utf8)
        total += startsCharacter(byte) ? 1 : 0;
    const size_t from = afterChars(utf8, (total - maxChars) / 2);
    const std::string_view middle = utf8.substr(from);
    return middle.substr(0, afterChars(middle, maxChars));
}

std::vector<std::string> layoutLines(
    platform::Fonts& fonts, const FontSpec& font, std::string_view utf8, int maxWidth, const TextView& view)
{
    std::vector<std::string> lines;
    auto full = [&] { return static_cast<int>(lines.size()) >= view.maxLines; };
    for (size_t next = 0; next <= utf8.size() && !full();) {
        const std::string_view para = nextParagraph(utf8, next);
        // NOTE: a paragraph with more characters than can be seen is wider than the box anyway, so it
        // is not measured whole.
        const bool longer = afterChars(para, view.maxChars) != std::string_view::npos;
        if (maxWidth < 0 || (!longer && fonts.measure(font, para).w <= maxWidth)) {
            lines.emplace_back(visiblePart(para, view.maxChars, view.align));
            continue;
        }
        std::string line;
        size_t pos = 0;
        while (pos < para.size() && !full()) {
            size_t blank = para.find(' ', pos);
            size_t end = blank == std::string_view::npos ? para.size() : blank;
            std::string_view word = visiblePart(para.substr(pos, end - pos), view.maxChars, view.align);
            std::string candidate = line.empty() ? std::string(word) : line + " " + std::string(word);
            if (line.empty() || fonts.measure(font, candidate).w <= maxWidth) {
                line = std::move(candidate);
            } else {
                lines.push_back(std::move(line));
                line = std::string(word);
            }
            pos = end == para.size() ? end : end + 1;
        }
        if (!full())
            lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace ombrel::runtime
