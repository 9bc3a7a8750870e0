// Command lines in parts, and processes for who has only the parts.
#pragma once

#include "platform/system/Process.h"

#include <string>
#include <vector>

namespace tessaly::posix {

// The arguments in `line`, the program first. Blanks and tabs separate; double quotes group and are removed, also in
// the middle of an argument ("" is an empty argument); a quote without its partner reaches to the end of the line.
// Every other character stands for itself. A blank line has no arguments.
//
// A program without quotes may contain blanks, as with CreateProcess on Windows. Each beginning of the line that ends
// before a blank or the first quote may be it. The shortest that `isFile` accepts is the program; if there is none, the
// line is split as it stands.
std::vector<std::string> SplitCommandLine(std::string_view line, const std::function<bool(const std::string&)>& isFile);

// What stands behind the program's name on the command line: the arguments of main() but the first, with a blank
// between two. The shell has split it. A path with blanks is one argument or several: the program takes all for one
// path.
std::string CommandLine(int count, char** arguments);

// True when `path` names a regular file, through links as well.
bool IsRegularFile(const std::string& path);

// tessaly::RunProcess with the program and its arguments. A name without "/" is looked up in $PATH. No arguments, or
// one with a NUL in it, give the start error EINVAL; a script needs its "#!" line (ENOEXEC).
ProcessResult RunProcess(const std::vector<std::string>& arguments,
                         const std::function<void(std::string_view)>& onOutput);

// tessaly::StartProcess in the same way. The process never becomes a zombie, gets no open file of this program and no
// key from its terminal. Its standard input is empty.
void StartDetached(const std::vector<std::string>& arguments, const std::string& outputPath);

} // namespace tessaly::posix
