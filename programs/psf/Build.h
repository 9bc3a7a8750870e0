// psf build: the window's Build command. Unlike the window, it waits for the compiler.
#pragma once

#include "programs/psf/base/Session.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tessaly::psf {

struct BuildOptions {
    std::size_t jobs = 1;              // how many compilers may run at a time
    std::optional<std::string> output; // the output name instead of the usual one; for one file
};

// Generates the C file of each file, runs the compiler's batch file and prints its output, with the positions mapped to
// members. In front stands what Lint finds and compilers hide. One file has the C file of the settings. Of several each
// has one of its own beside that, if the batch file heeds TESSALY_C_FILE, as the kit's do; else they take turns. Their
// output comes in the order of the files. Returns the compiler's exit status, or that of what went wrong before: the
// load's, the generation's, CompilerMissing, WrongUsage; of several that of the first that failed.
int Build(Session& session, const std::vector<std::string>& files, const BuildOptions& options);

} // namespace tessaly::psf
