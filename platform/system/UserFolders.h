// Where the rules for the XDG base directories place a program's files. A variable that is empty or holds a relative
// path counts as not set. The folders need not exist.
#pragma once

#include "platform/system/Environment.h"

#include <string>
#include <vector>

namespace tessaly {

// The program's own.
std::string ConfigFolder(const Environment& environment); // $XDG_CONFIG_HOME/tessaly, ~/.config/tessaly
std::string StateFolder(const Environment& environment);  // $XDG_STATE_HOME/tessaly, ~/.local/state/tessaly

// Of all programs, the user's own first: $XDG_CONFIG_HOME and $XDG_CONFIG_DIRS; $XDG_DATA_HOME and $XDG_DATA_DIRS.
std::vector<std::string> ConfigFolders(const Environment& environment);
std::vector<std::string> DataFolders(const Environment& environment);

} // namespace tessaly
