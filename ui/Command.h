// An error ends the command in which it happens, where the event is raised, or only a step of it that may fail.
#pragma once

#include <exception>
#include <functional>
#include <utility>

namespace tessaly {

// Runs a step of a command. An error in it ends this step alone, without a message.
template <class Step, class... Arguments>
void Attempt(Step&& step, Arguments&&... arguments) {
    try {
        std::invoke(std::forward<Step>(step), std::forward<Arguments>(arguments)...);
    } catch (const std::exception&) {
        return; // kept on purpose: what fails does so silently
    }
}

} // namespace tessaly
