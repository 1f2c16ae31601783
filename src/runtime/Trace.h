// Trace: where every observable effect of the system is written as one line (forms shown, sounds
// played, programs started...). The replay harness writes it to a file with the virtual time.
#pragma once

#include <string_view>

namespace ombrel::runtime {

class Trace {
public:
    virtual ~Trace() = default;
    // One effect, without time: "<category> <details>", e.g. "form show Main". Paths are relative
    // to the program's folder.
    virtual void effect(std::string_view line) = 0;
};

class NullTrace final : public Trace {
public:
    void effect(std::string_view) override { }
};

} // namespace ombrel::runtime
