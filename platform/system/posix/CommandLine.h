// What stands behind the program's name on a command line.
#pragma once

#include <string>

namespace tessaly::posix {

// The arguments of main() behind the first, with a blank between two. A path with blanks is one argument or several:
// the program takes all of its command line for one path.
std::string CommandLine(int count, char** arguments);

} // namespace tessaly::posix
