// A kernel handle that is closed once, and the last error as an exception.
#pragma once

#include <system_error>
#include <utility>
#include <windows.h>

namespace tessaly::win32 {

// The error of the last call of Windows.
inline std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

[[noreturn]] inline void ThrowLastError(const char* what) {
    throw std::system_error(LastError(), what);
}

// Null and INVALID_HANDLE_VALUE are both no handle: Windows' calls do not agree on one.
class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : mHandle(handle) {}
    Handle(Handle&& other) noexcept : mHandle(std::exchange(other.mHandle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(mHandle, other.mHandle);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { Close(); }

    explicit operator bool() const { return mHandle != nullptr && mHandle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return mHandle; }

    // Whether that went well; true when there is nothing to close.
    bool Close() {
        HANDLE handle = std::exchange(mHandle, nullptr);
        return handle == nullptr || handle == INVALID_HANDLE_VALUE || CloseHandle(handle) != 0;
    }

private:
    HANDLE mHandle = nullptr;
};

} // namespace tessaly::win32
