// How an event leaves Windows' own code: what its handler throws must not pass through the frames of the system.
#pragma once

#include "platform/desktop/win32/Headers.h"

#include <exception>
#include <functional>
#include <type_traits>

namespace tessaly::win32 {

// Raises an event if somebody listens. Whatever a user is to know of a failure the handler shows itself; what it
// throws in spite of that ends here.
template <class... Arguments>
void Raise(const std::function<void(Arguments...)>& event, const std::type_identity_t<Arguments>&... arguments) {
    if (!event) {
        return;
    }
    const auto handler = event; // it may replace itself
    try {
        handler(arguments...);
    } catch (const std::exception& error) {
        OutputDebugStringA(error.what());
    }
}

} // namespace tessaly::win32
