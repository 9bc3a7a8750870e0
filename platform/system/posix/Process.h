// Processes by their arguments, for who has no command line.
#pragma once

#include "platform/system/Process.h"

#include <string>
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

// tessaly::RunProcess with the program and its arguments. A name without "/" is looked up in $PATH. No arguments, or
// one with a NUL in it, give the start error EINVAL; a script needs its "#!" line (ENOEXEC).
ProcessResult RunProcess(const std::vector<std::string>& arguments,
                         const std::function<void(std::string_view)>& onOutput);

// tessaly::StartProcess in the same way. The process belongs to nobody here: it never becomes a zombie, it gets no open
// file of this program, and no key pressed in this program's terminal reaches it. Its standard input is empty.
void StartDetached(const std::vector<std::string>& arguments, const std::string& outputPath);

} // namespace tessaly::posix
