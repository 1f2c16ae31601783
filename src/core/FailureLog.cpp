// FailureLog: remembering what was written, and the bounded file.
#include "core/FailureLog.h"

#include "core/AtomicFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <system_error>

namespace ombrel::core {

namespace {

// A cause can carry a field of a damaged file, which has no length limit.
constexpr std::size_t kMaxCause = 400;
// Each cause from a file names the file, so the set is bounded by the cabinet's files; this is for a
// cabinet that keeps failing in ever new ways.
constexpr std::size_t kMaxRemembered = 4096;

} // namespace

std::string placeOf(const char* file, int line)
{
    std::string_view name = file ? file : "";
    const size_t src = name.rfind("src/");
    if (src != std::string_view::npos)
        name.remove_prefix(src + 4);
    return std::string(name) + ":" + std::to_string(line);
}

FailureLog::FailureLog(
    std::string path, std::ostream& echo, std::function<std::string()> stamp, std::size_t limit)
    : m_path(std::move(path))
    , m_echo(echo)
    , m_stamp(std::move(stamp))
    , m_limit(limit)
{
}

void FailureLog::note(std::string_view cause, const char* file, int line)
{
    if (!cause.empty())
        noteAt(placeOf(file, line), cause);
}

void FailureLog::noteAt(std::string_view place, std::string_view cause)
{
    if (cause.empty())
        return;
    try {
        std::string text(cause.substr(0, kMaxCause));
        if (cause.size() > kMaxCause)
            text += "...";
        if (m_written.size() >= kMaxRemembered)
            m_written.clear();
        if (!m_written.emplace(std::string(place), text).second)
            return;
        const std::string line = text + " (passed over at " + std::string(place) + ")\n";
        m_echo << "ombrel: " << line << std::flush;
        append((m_stamp ? m_stamp() + " " : std::string()) + line);
    } catch (...) {
        // NOTE: a log that cannot take a line must not turn a passed-over failure into a fatal one.
    }
}

void FailureLog::append(const std::string& line) noexcept
{
    namespace fs = std::filesystem;
    if (m_path.empty())
        return;
    try {
        std::error_code ec;
        const auto status = fs::status(m_path, ec);
        // Anything but a plain file (a folder, a pipe that would wait for a reader) is left alone.
        if (fs::exists(status) && !fs::is_regular_file(status))
            return;
        const auto size = fs::exists(status) ? fs::file_size(m_path, ec) : 0;
        if (!ec && size + line.size() > m_limit)
            keepNewerHalf();
        std::ofstream out(m_path, std::ios::binary | std::ios::app);
        out << line;
    } catch (...) {
    }
}

void FailureLog::keepNewerHalf() noexcept
{
    try {
        std::string bytes;
        if (!readFile(m_path, bytes))
            return;
        // The newer half, from the first whole line in it.
        size_t begin = bytes.size() - std::min(bytes.size(), m_limit / 2);
        if (begin > 0 && bytes[begin - 1] != '\n') {
            begin = bytes.find('\n', begin);
            begin = begin == std::string::npos ? bytes.size() : begin + 1;
        }
        writeFileAtomic(m_path, std::string_view(bytes).substr(begin));
    } catch (...) {
    }
}

} // namespace ombrel::core
