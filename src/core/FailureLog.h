// FailureLog: the failures that the cabinet passes over, written down for its owner: once per place
// and cause, to standard error and to a small file in the cabinet's folder.
#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace ombrel::core {

inline constexpr const char* kFailureLogFileName = "ombrel.log";

// The handlers go on after a failing step, so without this log the owner would only see what is
// missing on the screen. Owned by the application and handed down to the forms; it never throws and
// never stops the program: a file that cannot be written leaves the line on standard error only. The
// log is no trace effect: replays write it too, and their traces do not show it.
class FailureLog
{
public:
    static constexpr std::size_t kDefaultLimit = 64 * 1024;

    // path: the log file, appended to ("" for none); echo: standard error, or what stands for it;
    // stamp: the wall-clock time put before each line of the file. Once the file would pass limit
    // bytes, its older half is dropped.
    FailureLog(std::string path, std::ostream& echo, std::function<std::string()> stamp = {},
        std::size_t limit = kDefaultLimit);

    // Writes the cause (an empty one is no failure), unless it was written from the same place already:
    // a timer that fails each tick writes one line, not one a tick. The place is the caller's file and
    // line, which the compiler fills in where the call is written.
    // NOTE: the builtins stand for std::source_location, which clang 14 (the fuzz build) lacks.
    void note(std::string_view cause, const char* file = __builtin_FILE(), int line = __builtin_LINE());
    // The same with a place named by the caller ("Main.mpFX").
    void noteAt(std::string_view place, std::string_view cause);

private:
    void append(const std::string& line) noexcept;
    void keepNewerHalf() noexcept;

    std::string m_path;
    std::ostream& m_echo;
    std::function<std::string()> m_stamp;
    std::size_t m_limit;
    std::set<std::pair<std::string, std::string>> m_written; // place and cause
};

// The place of a call as the log names it: the file below src/ and the line.
std::string placeOf(const char* file, int line);

} // namespace ombrel::core
