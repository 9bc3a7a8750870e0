// How an event leaves a desktop: what its handler throws must not pass through the frames of the system.
#pragma once

#include <exception>
#include <functional>
#include <type_traits>

namespace tessaly {

// Raises an event if somebody listens. Whatever a user is to know of a failure the handler shows itself; what it
// throws in spite of that ends here.
template <class... Arguments>
void Raise(const std::function<void(Arguments...)>& event, const std::type_identity_t<Arguments>&... arguments) {
    try {
        if (const auto handler = event) { // a copy: it may replace itself
            handler(arguments...);
        }
    } catch (const std::exception&) {
        return;
    }
}

// Asks whoever listens. False where nobody does, and where the answer fails.
template <class... Arguments>
bool Answer(const std::function<bool(Arguments...)>& question, const std::type_identity_t<Arguments>&... arguments) {
    bool isYes = false;
    Raise(std::function<void()>([&] { isYes = question && question(arguments...); }));
    return isYes;
}

} // namespace tessaly
