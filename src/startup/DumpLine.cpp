// DumpLine: dump values as words and escaped, quoted text.
#include "startup/DumpLine.h"

#include "core/TextCodec.h"

#include <charconv>

namespace ombrel::startup {

DumpLine::DumpLine(std::string_view kind, std::string_view name)
    : m_text(kind)
{
    m_text += ' ';
    m_text += name;
}

DumpLine& DumpLine::text(std::string_view key, std::string_view value)
{
    return word(key, quotedDumpText(value));
}

DumpLine& DumpLine::word(std::string_view key, std::string_view value)
{
    m_text += ' ';
    m_text += key;
    m_text += ' ';
    m_text += value;
    return *this;
}

std::string DumpLine::numberText(long long value)
{
    return std::to_string(value);
}

// The shortest text that reads back as the same value: 8.25, 0.1, 640.
std::string DumpLine::numberText(double value)
{
    char buffer[32];
    return { buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr };
}

std::string DumpLine::numberText(float value)
{
    char buffer[32];
    return { buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr };
}

std::string quotedDumpText(std::string_view text)
{
    std::string out = "\"";
    // Text that is not UTF-8 (a Windows-1252 caption) keeps its bytes readable and the trace UTF-8.
    core::appendEscaped(out, text, true, !core::isValidUtf8(text));
    out += '"';
    return out;
}

} // namespace ombrel::startup
