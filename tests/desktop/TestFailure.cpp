// What goes wrong in a test is told at once.
#include "tests/desktop/TestFailure.h"

#include <iostream>
#include <utility>

namespace tessaly::memory {

TestFailure::TestFailure(std::string message) : mMessage(std::move(message)) {
    std::cerr << "memory desktop: " << mMessage << '\n';
}

} // namespace tessaly::memory
