// What the words of a call mean.
#pragma once

#include <string>
#include <vector>

namespace tessaly::psf {

// Does what the words say; the first of them is the program's name. Returns the exit status. What is wrong with the
// words it says itself; any other error of a command is thrown.
int Run(const std::vector<std::string>& arguments);

} // namespace tessaly::psf
