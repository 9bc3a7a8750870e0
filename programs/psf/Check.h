// psf check: what a load loses or changes without a word, told to the user.
#pragma once

#include "programs/psf/Session.h"

#include <string>

namespace tessaly::psf {

// Prints the warnings for `file`, one a line, as "FILE:LINE: warning: MEMBER: ...", in the order of the lines.
// Returns Success, WarningsFound, or the load's status.
int Check(Session& session, const std::string& file);

} // namespace tessaly::psf
