// Replacing a file so that at every moment its name holds the old content or the new one, whole.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <system_error>

namespace tessaly {

// The fate of an existing file when another one is to take its name. One with several names keeps the old content under
// the others, so it is replaced only where that is meant.
enum class Existing { Keep, Replace, ReplaceLinked };

// Which file has a name, and in which state. Equal states are those of one file that nobody has written to between.
struct FileState {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    std::uint64_t size = 0;
    std::int64_t written = 0; // when, in the system's finest measure
    std::int64_t changed = 0; // the same of mode and names

    bool operator==(const FileState& other) const = default;
};

// The state of the file at `path`, through links. No value when there is none, or it is a device or a folder.
std::optional<FileState> StateOf(const std::string& path);

// Has `write` make a new file beside `path`, flushes it and then gives it the name `path`. `write` gets the path to
// write to and returns whether that went well. A link stays and the file that it points to is replaced. A device or a
// pipe cannot be replaced and is written in place. With `expected` the file must be in that state right before.
//
// Linux: the new file gets mode, owner, extended attributes and access lists of the old one as far as that is allowed.
// Windows: it gets the attributes (hidden, system, not indexed), access list and streams. It is tried a while when
// another program, such as a virus scanner, holds one of the two.
//
// Returns no error, or
// - errc::file_exists for a file left alone,
// - errc::operation_not_permitted for one without write permission,
// - errc::too_many_links for one with several names, unless these are to be cut,
// - errc::resource_unavailable_try_again for one that is not in the state `expected`,
// - errc::operation_canceled when `write` returned false,
// or the error of the call that failed. Unless it returns no error the file at `path` is as it was, and no other file
// is left behind. What a killed program left in that folder is removed on the way.
std::error_code ReplaceWhole(const std::string& path, Existing existing,
                             const std::function<bool(const std::string&)>& write,
                             const std::optional<FileState>& expected = std::nullopt);

} // namespace tessaly
