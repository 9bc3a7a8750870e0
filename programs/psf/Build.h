// psf build: what the window's Build command does, and then the wait that the window does without.
#pragma once

#include "programs/psf/Session.h"

#include <string>

namespace tessaly::psf {

// Generates the C file of `file` at the place that the settings name, starts the compiler's batch file, waits, and
// prints what it wrote with the positions mapped to members. Returns the compiler's exit status, or that of what
// went wrong before: the load's, the generation's, CompilerMissing, WrongUsage.
int Build(Session& session, const std::string& file);

} // namespace tessaly::psf
