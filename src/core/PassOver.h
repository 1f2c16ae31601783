// passOver: one statement of a handler that passes over its failure, as the cabinet's handlers do: what
// the statement throws is dropped and the handler goes on with its next statement.
#pragma once

#include <exception>
#include <utility>

namespace ombrel::core {

template <class Statement> void passOver(Statement&& statement)
{
    try {
        std::forward<Statement>(statement)();
    } catch (const std::exception&) {
        // Passed over.
    }
}

} // namespace ombrel::core
