// How an event leaves a desktop: what its handler throws must not pass through the frames of the system.
#pragma once

#include <exception>
#include <functional>
#include <type_traits>

namespace tessaly {

// Raises an event, or asks a question, if somebody listens. Whatever a user is to know of a failure the handler shows
// itself; what it throws in spite of that ends here, and the command with it. Returns the answer: false, or empty,
// where nobody listens and where the handler fails.
template <class Result, class... Arguments>
Result Raise(const std::function<Result(Arguments...)>& event, const std::type_identity_t<Arguments>&... arguments) {
    try {
        if (const auto handler = event) { // a copy: it may replace itself
            return handler(arguments...);
        }
    } catch (const std::exception&) {
        return Result();
    }
    return Result();
}

} // namespace tessaly
