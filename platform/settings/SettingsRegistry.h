// The settings without a Windows registry: registry export files, one of the user's own and others for all users. A
// changed value is written back to the user's own file.
#pragma once

#include "platform/settings/RegistryStore.h"
#include "platform/system/Environment.h"
#include "platform/system/SequentialFiles.h"

#include <functional>
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

class SettingsRegistry final : public RegistryStore {
public:
    using OnProblem = std::function<void(const std::string& problem)>;

    // Reads the settings files. `onProblem` is called with each thing that is wrong there, "path:line: text"; the rest
    // counts. A missing file is empty and not wrong; one that cannot be read, or has more than 16 MB, is one problem.
    // Missing folders above a path with "~/" are made, for whoever gets it wants to write a file there.
    SettingsRegistry(
        SequentialFiles& files, Environment environment, const OnProblem& onProblem = [](const std::string&) {});

    // A key alone changes no file. Puts the value into the user's own file, too, and makes that if there is none. The
    // file is replaced as a whole or not at all, and keeps everything else. An unchanged value is not written.
    // AccessDenied when the file cannot be written or cannot carry the value.
    std::int32_t SetValue(Handle key, std::string_view valueName, std::uint32_t type, std::string_view bytes) override;

private:
    void Read(const std::string& path, const OnProblem& onProblem);
    void ExpandHomes();

    SequentialFiles& mFiles;
    Environment mEnvironment;
};

} // namespace tessaly
