// The command line that compiles a program block, and the name of the program that comes out of it.
#pragma once

#include <string>
#include <string_view>

namespace tessaly {

// The name of the program made from the PSF file `psfPath`: the path up to its first ".PSF", in capital or small
// letters, and ".out". A folder "old.psfs" cuts the path short, and without any ".PSF" the name is ".out": both kept on
// purpose.
std::string OutputName(std::string_view psfPath);

// `compBat`, which is put in as it stands, a blank, and the output name in double quotes.
std::string CompilerCommandLine(std::string_view compBat, std::string_view outputName);

} // namespace tessaly
