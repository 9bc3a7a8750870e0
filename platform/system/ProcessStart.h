// Starting another program.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

// Window styles of a process start, as Windows' ShowWindow numbers them.
inline constexpr std::int32_t MaximizedWithFocus = 3;

class ProcessStart {
public:
    virtual ~ProcessStart() = default;

    // Starts a process with this one command line and window style and does not wait for it. Throws std::system_error
    // when it cannot be started.
    virtual void StartProcess(const std::string& commandLine, std::int32_t windowStyle) = 0;
};

} // namespace tessaly
