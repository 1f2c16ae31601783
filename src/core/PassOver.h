// passOver: one statement of a handler that passes over its failure, as the cabinet's handlers do: what
// the statement throws is dropped and the handler goes on with its next statement. The failure is
// written to the log, with the place of the call.
#pragma once

#include "core/FailureLog.h"

#include <exception>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ombrel::core {

// A statement may also return a message, for a reader that says why it stopped instead of throwing
// (openCfg, getKeys); a non-empty one is logged like a throw.
template <class Statement>
void passOver(
    FailureLog& log, Statement&& statement, const char* file = __builtin_FILE(), int line = __builtin_LINE())
{
    try {
        if constexpr (std::is_convertible_v<std::invoke_result_t<Statement>, std::string_view>)
            log.note(std::string_view(std::forward<Statement>(statement)()), file, line);
        else
            std::forward<Statement>(statement)();
    } catch (const std::exception& error) {
        log.note(error.what(), file, line);
    }
}

} // namespace ombrel::core
