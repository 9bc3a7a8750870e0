// Replacing a file so that at every moment its name holds the old content or the new one, whole.
#pragma once

#include "platform/ExistingFile.h"

#include <functional>
#include <string>

namespace tessaly {

// Has `write` make a new file beside `path` under a name of its own, puts it on the disk and then renames it to
// `path`. The new file gets the mode of the old one, and its owner where that is allowed; a symbolic link stays
// and the file that it points to is replaced. A device or a pipe cannot be replaced and is written in place.
// `write` gets the path to write to and returns whether that went well. With Existing::Keep a file that is
// there is left alone.
// Returns 0; EEXIST for a file left alone; ECANCELED when `write` returned false; else the errno of the call
// that failed. Unless it returns 0 the file at `path` is as it was, and no other file is left behind.
int ReplaceFile(const std::string& path, Existing existing, const std::function<bool(const std::string&)>& write);

} // namespace tessaly
