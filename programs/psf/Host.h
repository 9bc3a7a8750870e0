// What psf needs of the system that it runs on, beside the contracts of platform/system/. HostPosix.cpp and
// HostWin32.cpp both have all of it.
#pragma once

#include "platform/system/Registry.h"
#include "platform/system/SequentialFiles.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace tessaly::psf {

// Calls `run` with the program's name and its arguments in UTF-8 and returns what it returns. Standard streams are
// plain bytes meanwhile, and a console shows UTF-8.
int RunWithArguments(int argc, char** argv, const std::function<int(const std::vector<std::string>&)>& run);

std::unique_ptr<SequentialFiles> MakeFiles();

// How the help calls the code page where nobody chose one.
std::string_view HostCodePageName();

// The settings: the file that $TESSALY_SETTINGS names, or else where this system keeps them. `onProblem` is called with
// whatever is wrong with them; what is right counts.
std::unique_ptr<Registry> OpenSettings(SequentialFiles& files,
                                       const std::function<void(const std::string&)>& onProblem);

// Whether `commandLine` hands `argument`, which it ends with in double quotes, to its program as it stands.
bool CarriesArgument(const std::string& commandLine, const std::string& argument);

// What an argument must not have for that, in words.
std::string_view UncarriedCharacters();

// How the compiler's command line ended.
struct CompilerResult {
    std::error_code startError; // why it could not be started
    int exitStatus = 0;
};

// Runs a command line until its process ends, with nothing to read. `output` gets what it wrote.
CompilerResult RunCompiler(const std::string& commandLine, std::string& output);

} // namespace tessaly::psf
