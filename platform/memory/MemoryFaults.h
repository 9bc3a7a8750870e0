// Makes one call of a desktop fail, whichever object it is made to: all calls of all interfaces are counted together.
// What a user does is not a call; a test that reads a control through its interface makes one.
#pragma once

#include <cstddef>
#include <system_error>

namespace tessaly {

class MemoryFaults {
public:
    // Makes the call number `number` (counted from 1) from now on fail, once, before it does anything. It throws a
    // std::system_error, which also is the std::runtime_error that a file call may throw.
    void FailAt(std::size_t number) { mCallsLeft = number; }

    // Nothing fails any more.
    void Off() { mCallsLeft = 0; }

    // Whether a failure is still to come.
    bool IsPending() const { return mCallsLeft > 0; }

    // How many calls were made so far.
    std::size_t Calls() const { return mCalls; }

    // For the objects of the desktop: a call begins.
    void Count() {
        ++mCalls;
        if (mCallsLeft > 0 && --mCallsLeft == 0) {
            throw std::system_error(std::make_error_code(std::errc::io_error), "a call that was made to fail");
        }
    }

private:
    std::size_t mCalls = 0;
    std::size_t mCallsLeft = 0;
};

} // namespace tessaly
