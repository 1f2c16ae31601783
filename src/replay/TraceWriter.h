// TraceWriter: the trace as a text file, one "<ms> <line>" per effect, ms read from the run's clock.
#pragma once

#include "runtime/Clock.h"
#include "runtime/Trace.h"

#include <fstream>
#include <mutex>
#include <ostream>
#include <string>

namespace ombrel::replay {

// Each line is flushed as it is written, so a run that crashes still leaves its trace up to the crash.
// Line breaks and other control characters inside a line are written as \n, \r, \t or \xHH, so one
// effect stays one line.
class TraceWriter final : public runtime::Trace {
public:
    // To the file at path ("-": standard output; empty: nowhere).
    TraceWriter(const runtime::Clock& clock, const std::string& path);
    TraceWriter(const runtime::Clock& clock, std::ostream& out);

    // False when the file could not be made.
    bool ok() const { return m_ok; }
    void effect(std::string_view line) override;

private:
    const runtime::Clock& m_clock;
    std::ofstream m_file;
    std::ostream* m_out = nullptr;
    bool m_ok = true;
    std::mutex m_mutex;
};

} // namespace ombrel::replay
