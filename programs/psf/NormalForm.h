// The form of a file in which texts have no line breaks at their ends, for version control.
#pragma once

#include "programs/psf/Session.h"

#include <optional>
#include <string>

namespace tessaly::psf {

// `document` in normal form. No value when that would load as another document: a line of a text can be the tag of what
// now follows it.
std::optional<std::string> NormalForm(const Session& session, const VornSrcObj& document);

} // namespace tessaly::psf
