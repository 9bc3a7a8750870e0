// Replacing a file so that at every moment its name holds the old content or the new one, whole.
#pragma once

#include <functional>
#include <string>
#include <system_error>

namespace tessaly {

// The fate of an existing file when another one is to take its name.
enum class Existing { Replace, Keep };

// Has `write` make a new file beside `path` under a name of its own, flushes it and then gives it
// the name `path`. A link stays and the file that it points to is replaced. A device or a pipe cannot be replaced and
// is written in place. `write` gets the path to write to and returns whether that went well. With Existing::Keep a file
// that is there is left alone.
//
// Unix: the new file gets the mode of the old one, and its owner if that is allowed.
// Windows: the new file gets the attributes of the old one (hidden, system, not indexed); a read-only file is not
// replaced. It is tried a while when another program, such as a virus scanner, holds one of the two.
//
// Returns no error; errc::file_exists for a file left alone; errc::operation_canceled when `write` returned false; else
// the error of the call that failed. Unless it returns no error the file at `path` is as it was, and no other file is
// left behind.
std::error_code ReplaceWhole(const std::string& path, Existing existing,
                             const std::function<bool(const std::string&)>& write);

} // namespace tessaly
