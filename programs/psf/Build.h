// psf build: the window's Build command. Unlike the window, it waits for the compiler.
#pragma once

#include "programs/psf/Session.h"

#include <string>

namespace tessaly::psf {

// Generates the C file of `file` where the settings want it, runs the compiler's batch file and prints its output, with
// the positions mapped to members. Returns the compiler's exit status, or that of what went wrong before: the load's,
// the generation's, CompilerMissing, WrongUsage.
int Build(Session& session, const std::string& file);

} // namespace tessaly::psf
