// Starts the compiler's command line as a process, without a shell: nothing in it but blanks and double quotes
// has a meaning.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::posix {

// The arguments in `line`, the program first. Blanks and tabs separate; double quotes group and are removed, also in
// the middle of an argument ("" is an empty argument); a quote without its partner reaches to the end of the line.
// Every other character stands for itself. A blank line has no arguments.
//
// A program in front of the first quote may contain blanks, as with CreateProcess on Windows: of the pieces of the
// line that begin with its first character and end in front of a blank or the first quote, the program is the
// shortest that `isFile` says yes to. If there is none the line is split as it stands.
std::vector<std::string> SplitCommandLine(std::string_view line, const std::function<bool(const std::string&)>& isFile);

// True when `path` names a regular file, through links as well.
bool IsRegularFile(const std::string& path);

// How a process ended.
struct ProcessResult {
    int startError = 0; // errno when the process could not be started, else 0
    int exitStatus = 0; // its exit status, or 128 + the number of the signal that killed it

    bool Started() const { return startError == 0; }
};

// Runs `arguments[0]` with these arguments and waits until it ends. A name without "/" is looked up in $PATH. Its
// standard input is empty; what it writes to standard output and standard error goes to `onOutput`, in the order
// written and piece by piece as it arrives; a piece ends anywhere, also inside a line or a character.
//
// Only the process itself is waited for. One that it leaves behind, and that still holds its output open, loses
// what it writes later, and gets SIGPIPE for it.
//
// No arguments, or one with a NUL in it, give the start error EINVAL; a script needs its "#!" line (ENOEXEC).
// What `onOutput` throws is passed on, and the process killed. Throws std::system_error when the process cannot be
// waited for, which happens only if this process ignores SIGCHLD.
ProcessResult RunProcess(const std::vector<std::string>& arguments,
                         const std::function<void(std::string_view)>& onOutput);

} // namespace tessaly::posix
