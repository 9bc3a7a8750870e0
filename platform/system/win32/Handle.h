// A kernel handle that is closed once, and the last error as an exception.
#pragma once

#include <system_error>
#include <utility>
#include <windows.h>

namespace tessaly {

// The error of the last call of Windows.
inline std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

[[noreturn]] inline void ThrowLastError(const char* what) {
    throw std::system_error(LastError(), what);
}

// Null and INVALID_HANDLE_VALUE are both no handle: Windows' calls do not agree on one.
class Win32Handle {
public:
    Win32Handle() = default;
    explicit Win32Handle(HANDLE handle) : mHandle(handle) {}
    Win32Handle(Win32Handle&& other) noexcept : mHandle(std::exchange(other.mHandle, nullptr)) {}
    Win32Handle& operator=(Win32Handle&& other) noexcept {
        std::swap(mHandle, other.mHandle);
        return *this;
    }
    Win32Handle(const Win32Handle&) = delete;
    Win32Handle& operator=(const Win32Handle&) = delete;
    ~Win32Handle() { Close(); }

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

} // namespace tessaly
