// TraceWriter: timed, escaped trace lines.
#include "replay/TraceWriter.h"

#include "core/TextCodec.h"

#include <iostream>

namespace ombrel::replay {

TraceWriter::TraceWriter(const runtime::Clock& clock, const std::string& path)
    : m_clock(clock)
{
    if (path.empty())
        return;
    if (path == "-") {
        m_out = &std::cout;
        return;
    }
    m_file.open(path, std::ios::binary | std::ios::trunc);
    m_ok = m_file.is_open();
    if (m_ok)
        m_out = &m_file;
}

TraceWriter::TraceWriter(const runtime::Clock& clock, std::ostream& out)
    : m_clock(clock)
    , m_out(&out)
{
}

void TraceWriter::effect(std::string_view line)
{
    if (!m_out)
        return;
    std::string text = std::to_string(m_clock.nowMs());
    text += ' ';
    core::appendEscaped(text, line);
    text += '\n';
    std::lock_guard lock(m_mutex);
    *m_out << text;
    m_out->flush();
}

} // namespace ombrel::replay
