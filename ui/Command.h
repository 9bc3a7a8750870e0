// The boundary of a command: the one place where an error inside it ends.
#pragma once

#include <exception>
#include <utility>

namespace tessaly {

// Runs `command`. An error in it ends it without a message, as the user cancelling a dialog does.
template <class Function>
void RunCommand(Function&& command) {
    try {
        std::forward<Function>(command)();
    } catch (const std::exception&) {
        return; // kept on purpose: commands fail silently
    }
}

} // namespace tessaly
