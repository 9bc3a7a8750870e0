// The form of a file in which texts have no line breaks at their ends, for version control.
#pragma once

#include "platform/system/MemoryFile.h"
#include "programs/psf/base/Session.h"

#include <optional>
#include <string>

namespace tessaly::psf {

// `document`, which saves into `file`, in normal form. No value when that would load as another document: a line of a
// text can be the tag of what now follows it. That is only looked for when the document `mayHaveTags` in its texts.
std::optional<std::string> NormalForm(const Session& session, const VornSrcObj& document, MemoryFile& file,
                                      bool mayHaveTags = true);

} // namespace tessaly::psf
