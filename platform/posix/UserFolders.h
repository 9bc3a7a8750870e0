// The program's own folders of a user, as the rules for the XDG base directories place them. They need not exist.
#pragma once

#include "platform/posix/SettingsFile.h"

#include <string>

namespace tessaly {

std::string ConfigFolder(const Environment& environment); // $XDG_CONFIG_HOME/tessaly, ~/.config/tessaly
std::string StateFolder(const Environment& environment);  // $XDG_STATE_HOME/tessaly, ~/.local/state/tessaly
std::string CacheFolder(const Environment& environment);  // $XDG_CACHE_HOME/tessaly, ~/.cache/tessaly

} // namespace tessaly
