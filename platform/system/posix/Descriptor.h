// A file descriptor that is closed once, and at the latest when its owner goes; and what a failed call throws.
#pragma once

#include <cerrno>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tessaly::posix {

// Throws what the call `what` has left in errno.
[[noreturn]] inline void ThrowSystemError(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

class Descriptor {
public:
    // Takes over `number`; a negative one stands for none.
    explicit Descriptor(int number = -1) : mNumber(number) {}
    Descriptor(Descriptor&& other) noexcept : mNumber(std::exchange(other.mNumber, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(mNumber, other.mNumber);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    int Number() const { return mNumber; }

    // Closes what it has and takes over `number`.
    void Take(int number) {
        Close();
        mNumber = number;
    }

    // Returns 0 or errno. The descriptor is gone whatever close says, so it is never closed twice.
    int Close() {
        const int number = std::exchange(mNumber, -1);
        return number < 0 || ::close(number) == 0 || errno == EINTR ? 0 : errno;
    }

private:
    int mNumber;
};

} // namespace tessaly::posix
