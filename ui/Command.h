// An error ends the command in which it happens, or only a step of it that may fail.
#pragma once

#include <exception>
#include <utility>

namespace tessaly {

// Runs a step of a command. An error in it ends this step alone, without a message.
template <class Step>
void Attempt(Step&& step) {
    try {
        std::forward<Step>(step)();
    } catch (const std::exception&) {
        return; // kept on purpose: what fails does so silently
    }
}

// Runs a whole command. An error in it ends it without a message, as the user cancelling a dialog does.
template <class Function>
void RunCommand(Function&& command) {
    Attempt(std::forward<Function>(command));
}

} // namespace tessaly
