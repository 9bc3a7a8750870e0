// Makes calls of a desktop fail, whichever object they are made to: all calls of all interfaces are counted together.
// What a user does is not a call; a test that reads a control through its interface makes one.
#pragma once

#include <cstddef>
#include <system_error>

namespace tessaly::memory {

class Faults {
public:
    // Makes the call number `number` (counted from 1) from now on fail, once, before it does anything. It throws a
    // std::system_error, which also is the std::runtime_error that a file call may throw.
    void FailAt(std::size_t number) { Set(number, 0, false); }

    // The same, and once more `distance` calls later.
    void FailTwice(std::size_t number, std::size_t distance) { Set(number, distance, false); }

    // The same, and every call behind it fails, too.
    void FailFrom(std::size_t number) { Set(number, 1, true); }

    // Nothing fails any more.
    void Off() { Set(0, 0, false); }

    // Whether a failure is still to come.
    bool IsPending() const { return mCallsLeft > 0; }

    // How many calls were made so far.
    std::size_t Calls() const { return mCalls; }

    // For the objects of the desktop: a call begins.
    void Count() {
        ++mCalls;
        if (mCallsLeft > 0 && --mCallsLeft == 0) {
            mCallsLeft = mNextDistance;
            mNextDistance = mForEver ? 1 : 0;
            throw std::system_error(std::make_error_code(std::errc::io_error), "a call that was made to fail");
        }
    }

private:
    void Set(std::size_t number, std::size_t distance, bool forEver) {
        mCallsLeft = number;
        mNextDistance = distance;
        mForEver = forEver;
    }

    std::size_t mCalls = 0;
    std::size_t mCallsLeft = 0;    // until the next one fails, itself included; 0: none will
    std::size_t mNextDistance = 0; // mCallsLeft behind that failure
    bool mForEver = false;
};

} // namespace tessaly::memory
