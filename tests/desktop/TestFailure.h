// Thrown where a test goes wrong, as opposed to the program. Derived from nothing, so that no handler of the program
// takes it for one of its own; the text goes to the standard error, as test frameworks cannot read it.
#pragma once

#include <string>

namespace tessaly::memory {

class TestFailure {
public:
    explicit TestFailure(std::string message);

    const std::string& Message() const { return mMessage; }

private:
    std::string mMessage;
};

// A dialog was shown for which no answer was prepared, or was left open when the prepared answers ended.
class UnexpectedDialog final : public TestFailure {
public:
    using TestFailure::TestFailure;
};

// The test did something impossible for a user, such as pressing a button that is not there.
class ImpossibleAction final : public TestFailure {
public:
    using TestFailure::TestFailure;
};

} // namespace tessaly::memory
