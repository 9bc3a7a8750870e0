// The files that a command line means.
#pragma once

#include "programs/psf/base/Session.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::psf {

// `text`, which is UTF-8, for the standard library.
std::filesystem::path ToPath(const std::string& text);

// The name of a file in its folder, in UTF-8.
std::string NameIn(const std::filesystem::directory_entry& entry);

// What the names of program source files end in, in any case.
inline constexpr std::string_view PsfExtension = ".psf";
bool IsPsfName(std::string_view name);

// Calls `use` with each file that `paths` and then the list in the file `filesFrom` stand for, in order, until all have
// had their turn. A folder stands for all files below it whose name ends in ".psf" in any case, in byte order of their
// paths. Folders with a dot in front, and links to folders, are left out. The list has a path a line, or each with a
// NUL behind it; "-" reads it from standard input. Returns the greatest of what `use` returned, and LoadFailed at least
// for a folder or a list that cannot be read, which it tells.
int ForEachFile(Session& session, const std::vector<std::string>& paths, const std::optional<std::string>& filesFrom,
                const std::function<int(const std::string& file)>& use, const TellUnread& tell = PrintUnread);

} // namespace tessaly::psf
