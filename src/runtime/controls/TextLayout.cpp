// TextLayout: line breaking for labels.
#include "runtime/controls/TextLayout.h"

#include "platform/Fonts.h"

namespace ombrel::runtime {

namespace {

    std::vector<std::string_view> paragraphs(std::string_view text)
    {
        std::vector<std::string_view> out;
        size_t start = 0;
        for (size_t i = 0; i < text.size(); ++i) {
            if (text[i] != '\r' && text[i] != '\n')
                continue;
            out.push_back(text.substr(start, i - start));
            if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
            start = i + 1;
        }
        out.push_back(text.substr(start));
        return out;
    }

} // namespace

std::vector<std::string> layoutLines(platform::Fonts& fonts, const FontSpec& font, std::string_view utf8, int maxWidth)
{
    std::vector<std::string> lines;
    for (std::string_view para : paragraphs(utf8)) {
        if (maxWidth < 0 || fonts.measure(font, para).w <= maxWidth) {
            lines.emplace_back(para);
            continue;
        }
        std::string line;
        size_t pos = 0;
        while (pos < para.size()) {
            size_t blank = para.find(' ', pos);
            size_t end = blank == std::string_view::npos ? para.size() : blank;
            std::string_view word = para.substr(pos, end - pos);
            std::string candidate = line.empty() ? std::string(word) : line + " " + std::string(word);
            if (line.empty() || fonts.measure(font, candidate).w <= maxWidth) {
                line = std::move(candidate);
            } else {
                lines.push_back(std::move(line));
                line = std::string(word);
            }
            pos = end == para.size() ? end : end + 1;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace ombrel::runtime
