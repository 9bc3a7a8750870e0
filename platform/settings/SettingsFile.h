// The settings where there is no Windows registry: registry export files, one that the user keeps and others for all
// users. They are looked for anew whenever somebody asks.
#pragma once

#include "platform/settings/RegistryText.h"
#include "platform/system/Environment.h"

#include <string>
#include <vector>

namespace tessaly {

// The settings files, the one that counts most last; of several values with one name that in the last file counts.
//
// $TESSALY_SETTINGS alone when that is set and not empty, whether the file exists or not. Else those of these that
// exist: the user's own, $XDG_CONFIG_HOME/tessaly/settings.reg, in $HOME/.config when that is not set; below it the
// same in each folder of $XDG_CONFIG_DIRS, the first before the others, by default /etc/xdg. Relative paths in these
// variables are passed over, as the rules for the XDG base directories want it.
//
// A file below one of $XDG_CONFIG_DIRS is for all users of a machine. There "~/" at the front of a string stands for
// the user's home folder, so that each has files of his own.
std::vector<std::string> SettingsFiles(const Environment& environment);

// The user's own settings file, there or not: $TESSALY_SETTINGS or that in $XDG_CONFIG_HOME.
std::string UserSettingsFile(const Environment& environment);

// Reads all settings files into `store` and returns what is wrong with them, as ErrorText puts it. The folders that are
// missing above a path with "~/" are made, for whoever gets it wants to write a file there.
std::vector<std::string> ReadSettings(SequentialFiles& files, const Environment& environment, RegistryStore& store);

} // namespace tessaly
