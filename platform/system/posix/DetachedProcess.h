// Starting a program and leaving it to itself.
#pragma once

#include <string>
#include <vector>

namespace tessaly::posix {

// Starts `arguments[0]` with these arguments in the current folder and returns at once. A name without "/" is looked up
// in $PATH. The process belongs to nobody here: it goes on when this program ends, it never becomes a zombie, it gets
// no open file of this program, and no key pressed in this program's terminal reaches it. Its standard input is empty;
// standard output and standard error go to the file `outputPath`, which is made anew, or nowhere when that is "".
//
// Throws std::system_error when the file cannot be made or the program cannot be started (no arguments, or one with a
// NUL in it: EINVAL; a script without its "#!" line: ENOEXEC).
void StartDetached(const std::vector<std::string>& arguments, const std::string& outputPath);

} // namespace tessaly::posix
