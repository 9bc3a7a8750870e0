// psf's needs of its system, beside the contracts of platform/system/. HostPosix.cpp and HostWin32.cpp both have all of
// it.
#pragma once

#include "platform/system/Registry.h"
#include "platform/system/SequentialFiles.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::psf {

// Calls `run` with the program's name and its arguments in UTF-8 and returns what it returns. Standard streams are
// plain bytes meanwhile, and a console shows UTF-8.
int RunWithArguments(int argc, char** argv, const std::function<int(const std::vector<std::string>&)>& run);

// How the help calls the code page where nobody chose one.
std::string_view HostCodePageName();

// The settings: the file that $TESSALY_SETTINGS names, or else where this system keeps them. `onProblem` is called with
// whatever is wrong with them; what is right counts.
std::unique_ptr<Registry> OpenSettings(SequentialFiles& files,
                                       const std::function<void(const std::string&)>& onProblem);

// What a compiler printed, as UTF-8 where it can be known.
std::string CompilerText(const std::string& bytes);

} // namespace tessaly::psf
