// Starting other programs by their one command line. Windows itself finds the program at its front, tries the blanks
// in an unquoted path one after the other, and hands a batch file to its command interpreter.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace tessaly::win32 {

// Starts a process that inherits nothing and shows its first window in `windowStyle`, and does not wait for it. Throws
// std::system_error when it cannot be started.
void StartProcess(const std::string& commandLine, std::int32_t windowStyle);

// How a process ended.
struct ProcessResult {
    std::error_code startError; // why it could not be started
    int exitStatus = 0;         // as Windows has it, also after a crash

    bool Started() const { return !startError; }
};

// Runs a command line and waits until its process ends. Its standard input is empty; what it writes to standard output
// and standard error goes to `onOutput`, in the order written and piece by piece as it arrives; a piece ends anywhere,
// also inside a line or a character.
//
// Only the process itself is waited for. One that it leaves behind, and that still holds its output open, loses what it
// writes later.
//
// What `onOutput` throws is passed on, and the process killed. Throws std::system_error when its output cannot be read.
ProcessResult RunProcess(const std::string& commandLine, const std::function<void(std::string_view)>& onOutput);

} // namespace tessaly::win32
